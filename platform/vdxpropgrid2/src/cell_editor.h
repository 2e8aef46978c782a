#pragma once

#include <functional>
#include <string>

typedef struct _GtkCellRenderer GtkCellRenderer;
typedef struct _GtkTreeView GtkTreeView;
typedef struct _GtkTreeViewColumn GtkTreeViewColumn;

namespace vdxpropgrid2 {

/// Edits a cell of the toolkit's list in place.
///
/// The toolkit's own editing begins with a second click, where a drag begins as well, and forgets what was
/// typed when the focus goes. Here editing begins when it is asked for, and only Escape forgets. Texts are
/// UTF-8.
class cell_editor_t
{
public:
    cell_editor_t(GtkTreeView* tree, GtkTreeViewColumn* column, GtkCellRenderer* renderer);
    ~cell_editor_t();
    cell_editor_t(const cell_editor_t&) = delete;
    cell_editor_t& operator=(const cell_editor_t&) = delete;

    /// What screen readers call the entry.
    void set_name(const std::string& name) { m_name = name; }
    /// @param typed what a key has typed already takes the place of the text
    void start(int row, const std::string& text, const std::string& typed);
    bool is_active() const { return m_entry != nullptr; }
    bool commit();
    bool cancel();
    /// Whether there is anything in the entry that is not in the row.
    bool is_changed() const;
    void insert(const std::string& text);

    std::function<void(int row, const std::string& text)> on_edited;
    std::function<void()> on_typed;
    std::function<void()> on_finished;
    /// Pasting was asked for, and does not happen by itself.
    std::function<void()> on_paste;

private:
    struct handlers_t;

    void adopt(void* editable);
    void forget();

    GtkTreeView* m_tree;
    GtkTreeViewColumn* m_column;
    GtkCellRenderer* m_renderer;
    void* m_entry = nullptr;
    std::string m_name;
    std::string m_text;
    bool m_menu_is_open = false;
};

} // namespace vdxpropgrid2
