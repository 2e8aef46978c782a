#pragma once

#include "vdxpropgrid2/export.h"
#include "vdxpropgrid2/grid_rows.h"

#include <gen_helpers2/signal.h>
#include <wx_helpers1/picture.h>

#include <wx/panel.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vdxpropgrid2 {

/// A more-button that was pressed: the row, its key (no_key for the input row) and what stands in it.
struct click_data_t
{
    int row = -1;
    row_key_t key = no_key;
    std::string text;
};

/// What is to be said about a row: a picture and a colour by its kind, a word beside it, and a sentence that
/// its tool tip says.
struct row_mark_t
{
    /// How grave it is.
    enum class kind_t
    {
        none,
        information,
        warning,
        error
    };
    kind_t kind = kind_t::none;
    std::string word;
    std::string explanation;

    friend bool operator==(const row_mark_t& a, const row_mark_t& b)
    {
        return a.kind == b.kind && a.word == b.word && a.explanation == b.explanation;
    }
};

/// All texts that a grid shows on its own, in the user's language.
struct grid_texts_t
{
    std::string text_header;
    std::string check_header; ///< empty: there is no column of check boxes
    std::string mark_header;
    std::string widest_mark; ///< the word of a mark for which its column has room
    std::string more_header;
    std::string input_row; ///< stands in the last row, where new rows are typed
    // Entries of the context menu; an empty one is left out. "&" stands before the letter that chooses it.
    std::string menu_edit, menu_more, menu_up, menu_down, menu_remove;
    std::string menu_copy, menu_paste, menu_undo, menu_redo;
    // What a screen reader says when it was done; it is not said without.
    std::function<std::string(int number, int count)> moved;     ///< to this place among the rows, from 1
    std::function<std::string(const std::string& text)> removed; ///< the row of this text
    std::function<std::string(bool checked)> checked;            ///< the current row's box
};

/// A list of texts that the user edits in place: a row each, with a button for more, and below them the input
/// row, in which a text makes a new row.
///
/// Use it for lists whose order matters. For a fixed set of settings use controls of their own.
///
///     m_grid = new property_grid_t(this, texts);
///     m_grid->set_rows({{"/usr/lib"}, {"/lib"}});
///     m_grid->get_more_signal().connect(this, &my_page_t::on_more_button_clicked);
///     ...
///     m_grid->commit();                                // what is being typed counts as well
///     for (const row_t& row : m_grid->get_rows()) ...
///
/// Rows are counted from 0; the last one is the input row, so that row_count() is at least 1. Besides the
/// mouse (double click, drag, the context menu) the keys are: F2, Enter or a letter edits, F4 presses the
/// more-button, the space bar changes the check box, Alt+Up and Alt+Down move the row, Delete asks for its
/// removal, Ctrl+C copies it, Ctrl+V adds what the clipboard holds, Ctrl+Z and Ctrl+Shift+Z undo and redo,
/// Tab leaves. What was typed into a row is kept when the focus goes elsewhere; only Escape drops it. A row
/// whose text is emptied is asked to be removed.
///
/// The rows are in a native list that screen readers know. Ownership: a window, destroyed by its parent. GUI
/// thread. A row that is none does nothing.
class VDXPROPGRID2_EXPORT property_grid_t : public wxPanel, public gen_helpers2::subscriber_base_t
{
public:
    property_grid_t(wxWindow* parent, const grid_texts_t& texts);
    ~property_grid_t() override;

    /// What the grid says by itself, already translated.
    void set_texts(const grid_texts_t& texts);
    /// What stands in the last row, where new rows are typed.
    void set_input_text(const std::string& text);
    /// What screen readers call the list.
    void set_name(const std::string& name);
    /// The picture of all rows that are marked so.
    void set_mark_picture(row_mark_t::kind_t kind, const wx_helpers1::wxStaticPicture& picture);
    /// Makes rows of a text that is pasted; initially one of each line that is not empty.
    void set_splitter(std::function<std::vector<std::string>(const std::string&)> splitter);

    /// What is kept of a text that was typed; initially all of it.
    void set_converter(std::function<std::string(const std::string&)> converter);

    /// With the input row.
    int row_count() const;
    /// Whether it is the last one, in which new rows are typed.
    bool is_input_row(int row) const { return row == row_count() - 1; }
    /// Without the input row.
    const std::vector<row_t>& get_rows() const;
    /// no_key for the input row and for what is no row.
    row_key_t get_key(int row) const;
    /// Empty for what is no row.
    std::string get_text(int row) const;
    /// -1 when there is none.
    int find_row(row_key_t key) const;

    /// Other rows altogether, without marks and without a way back.
    void set_rows(std::vector<row_t> rows);
    /// Each of these is one step that the user can undo, and answers whether it was done.
    bool insert_rows(int before, const std::vector<std::string>& texts);
    /// See insert_rows().
    bool set_text(int row, const std::string& text);
    /// See insert_rows().
    bool set_checked(int row, bool checked);
    /// See insert_rows().
    bool move_row(int from, int to);
    /// See insert_rows().
    bool delete_row(int row);
    /// Goes one step back; false when there is none.
    bool undo();
    /// Does again what was undone last; false when there is none.
    bool redo();

    /// Marks a row; the mark stays with it until it is removed.
    void set_mark(int row, const row_mark_t& mark);
    /// Without a kind when there is none.
    row_mark_t get_mark(int row) const;

    /// -1 when there is none.
    int get_current_row() const;
    /// Selects a row and shows it; does not take the focus.
    void set_current_row(int row);
    /// Draws the rows again: for pictures that are another now.
    void refresh();

    /// Begins editing a row in place, as F2 does.
    void edit(int row);
    bool is_editing() const;
    /// Whether something is being typed that is not in its row.
    bool has_typed_text() const;
    /// Keeps what is being typed, as Enter does. True when something was being typed.
    bool commit();

    /// The user changed the text of a row, or made it in the input row. Not raised by calls.
    gen_helpers2::signal_t<int>& get_row_updated_signal();
    /// Editing in place has ended, by whatever way.
    gen_helpers2::signal_t<>& get_editing_finished_signal();
    /// Rows, their order or what is being typed changed, by the user or by calls. Not raised by set_rows().
    gen_helpers2::signal_t<>& get_changed_signal();
    gen_helpers2::signal_t<click_data_t>& get_more_signal();
    /// The user wants this row gone. Nothing happens by itself.
    gen_helpers2::signal_t<int>& get_remove_signal();
    gen_helpers2::signal_t<int>& get_current_changed_signal();

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

} // namespace vdxpropgrid2
