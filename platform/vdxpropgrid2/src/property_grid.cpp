#include "vdxpropgrid2/property_grid.h"

#include "grid_impl.h"
#include "more_renderer.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/sizer.h>

#include <algorithm>
#include <utility>

namespace vdxpropgrid2 {
namespace {

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string line = gen_helpers2::trim(std::string_view(text).substr(start, end - start));
        if (!line.empty())
            lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

// Nothing can be done there by keyboard, and backwards it would be in the way. The toolkit says otherwise
// when the list first appears.
void keep_out_of_header(GtkTreeViewColumn* column)
{
    if (gtk_tree_view_column_get_clickable(column))
        gtk_tree_view_column_set_clickable(column, FALSE);
}

} // namespace

property_grid_t::impl_t::impl_t(property_grid_t* owner, const grid_texts_t& texts)
    : grid(owner), model(new grid_model_t), splitter(lines_of)
{
    model->texts = texts;
    model->update_look();
    model->reset();
    view = new wxDataViewCtrl(grid, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE | wxDV_ROW_LINES);
    tree = GTK_TREE_VIEW(view->GtkGetTreeView());
    gtk_tree_view_set_enable_search(tree, FALSE);
    add_columns();
    view->AssociateModel(model.get());
    apply_texts();
    editor = std::make_unique<cell_editor_t>(
        tree, GTK_TREE_VIEW_COLUMN(columns[text_column]->GetGtkHandle()),
        GTK_CELL_RENDERER(columns[text_column]->GetRenderer()->GtkGetTextRenderer()));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(view, 1, wxEXPAND);
    grid->SetSizer(sizer);
    connect_input();
}

property_grid_t::impl_t::~impl_t()
{
    scroll_timer.Stop();
    editor->on_finished = nullptr;
    g_signal_handlers_disconnect_by_data(tree, this);
}

void property_grid_t::impl_t::add_columns()
{
    columns[text_column] = new wxDataViewColumn(
        wxString(), new wxDataViewIconTextRenderer("wxDataViewIconText", wxDATAVIEW_CELL_EDITABLE),
        text_column, wxDVC_DEFAULT_WIDTH, wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    columns[check_column] =
        new wxDataViewColumn(wxString(), new wxDataViewToggleRenderer("bool", wxDATAVIEW_CELL_ACTIVATABLE),
                             check_column, wxDVC_DEFAULT_WIDTH, wxALIGN_CENTER, wxDATAVIEW_COL_RESIZABLE);
    columns[mark_column] = new wxDataViewColumn(wxString(), new wxDataViewTextRenderer, mark_column,
                                                wxDVC_DEFAULT_WIDTH, wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    columns[more_column] = new wxDataViewColumn(
        wxString(), new wxDataViewTextRenderer("string", wxDATAVIEW_CELL_INERT, wxALIGN_CENTER), more_column,
        wxDVC_DEFAULT_WIDTH, wxALIGN_CENTER, 0);
    for (wxDataViewColumn* column : columns) {
        view->AppendColumn(column);
        g_signal_connect(column->GetGtkHandle(), "notify::clickable", G_CALLBACK(keep_out_of_header),
                         nullptr);
    }
    draw_dots(GTK_CELL_RENDERER(columns[more_column]->GetRenderer()->GtkGetTextRenderer()));
    // The list's last column would take what is left over; it belongs to the texts.
    gtk_tree_view_column_set_expand(GTK_TREE_VIEW_COLUMN(columns[text_column]->GetGtkHandle()), TRUE);
}

// Each column is as wide as its texts; what is left over is for the rows' own.
void property_grid_t::impl_t::apply_texts()
{
    constexpr int least_characters = 14;
    const grid_texts_t& texts = model->texts;
    const std::string* headers[] = {&texts.text_header, &texts.check_header, &texts.mark_header,
                                    &texts.more_header};
    wxFont bold = view->GetFont();
    bold.MakeBold(); // some themes' headers are
    const auto width_of = [&](const std::string& text) {
        int width = 0;
        view->GetTextExtent(wx_helpers1::to_label(text), &width, nullptr, nullptr, nullptr, &bold);
        return width;
    };
    const int margins = 2 * view->GetCharWidth();
    for (unsigned i = 0; i <= more_column; ++i) {
        columns[i]->SetTitle(wx_helpers1::to_label(*headers[i]));
        columns[i]->SetWidth(margins + width_of(*headers[i]));
    }
    columns[text_column]->SetWidth(least_characters * view->GetCharWidth());
    columns[mark_column]->SetWidth(margins +
                                   std::max(width_of(texts.mark_header), width_of(texts.widest_mark)));
    columns[check_column]->SetHidden(texts.check_header.empty());
    model->RowChanged(static_cast<unsigned>(model->rows.size()));
}

bool property_grid_t::impl_t::perform(const grid_rows_t::change_t& change)
{
    if (!change)
        return false;
    const int before = current();
    changing_rows = true;
    model->show(*change);
    changing_rows = false;
    if (change->kind == rows_change_t::kind_t::moved && model->texts.moved)
        announce(model->texts.moved(static_cast<int>(change->to) + 1, static_cast<int>(model->rows.size())));
    // The list leaves its cursor at the same number; the user's is at the row that was moved or came.
    if (change->kind == rows_change_t::kind_t::moved && before == static_cast<int>(change->at))
        set_current(static_cast<int>(change->to));
    const auto signal = changed; // a slot may destroy the grid
    signal.emit();
    return true;
}

// What the list itself does not tell readers of.
void property_grid_t::impl_t::announce(const std::string& text)
{
    if (view->IsShownOnScreen())
        wx_helpers1::announce(view, text);
}

int property_grid_t::impl_t::current() const
{
    GtkTreePath* path = nullptr;
    gtk_tree_view_get_cursor(tree, &path, nullptr);
    const int row = path ? gtk_tree_path_get_indices(path)[0] : -1;
    gtk_tree_path_free(path);
    return row;
}

void property_grid_t::impl_t::set_current(int row)
{
    if (row < 0 || row >= static_cast<int>(row_count()))
        return;
    GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
    gtk_tree_view_set_cursor(tree, path, nullptr, FALSE);
    gtk_tree_path_free(path);
}

property_grid_t::property_grid_t(wxWindow* parent, const grid_texts_t& texts) : wxPanel(parent)
{
    m_impl = std::make_unique<impl_t>(this, texts);
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(this, [this] {
            m_impl->model->update_look();
            m_impl->apply_texts(); // their widths are those of another font
            refresh();
        });
}

property_grid_t::~property_grid_t() = default;

void property_grid_t::set_texts(const grid_texts_t& texts)
{
    m_impl->model->texts = texts;
    m_impl->apply_texts();
}

void property_grid_t::set_input_text(const std::string& text)
{
    m_impl->model->texts.input_row = text;
    m_impl->apply_texts();
}

void property_grid_t::set_name(const std::string& name)
{
    wx_helpers1::set_accessible_name(m_impl->view, name);
    m_impl->editor->set_name(name);
}

void property_grid_t::set_mark_picture(row_mark_t::kind_t kind, const wx_helpers1::wxStaticPicture& picture)
{
    m_impl->model->pictures[kind] = picture;
    m_impl->model->update_look();
    refresh();
}

void property_grid_t::set_splitter(std::function<std::vector<std::string>(const std::string&)> splitter)
{
    m_impl->splitter = splitter ? std::move(splitter) : lines_of;
}

void property_grid_t::set_converter(std::function<std::string(const std::string&)> converter)
{
    m_impl->converter = std::move(converter);
}

int property_grid_t::row_count() const
{
    return static_cast<int>(m_impl->row_count());
}

const std::vector<row_t>& property_grid_t::get_rows() const
{
    return m_impl->model->rows.get();
}

row_key_t property_grid_t::get_key(int row) const
{
    return m_impl->is_row(row) ? get_rows()[static_cast<std::size_t>(row)].key : no_key;
}

std::string property_grid_t::get_text(int row) const
{
    return m_impl->is_row(row) ? get_rows()[static_cast<std::size_t>(row)].text : std::string();
}

int property_grid_t::find_row(row_key_t key) const
{
    const std::size_t row = m_impl->model->rows.find(key);
    return m_impl->is_row(static_cast<int>(row)) ? static_cast<int>(row) : -1;
}

void property_grid_t::set_rows(std::vector<row_t> rows)
{
    m_impl->editor->cancel();
    m_impl->changing_rows = true;
    m_impl->model->rows.assign(std::move(rows));
    m_impl->model->marks.clear();
    m_impl->model->reset();
    m_impl->changing_rows = false;
}

bool property_grid_t::insert_rows(int before, const std::vector<std::string>& texts)
{
    std::vector<row_t> rows;
    for (const std::string& text : texts)
        rows.push_back({text});
    return before >= 0 &&
           m_impl->perform(m_impl->model->rows.insert(static_cast<std::size_t>(before), std::move(rows)));
}

bool property_grid_t::set_text(int row, const std::string& text)
{
    return m_impl->is_row(row) &&
           m_impl->perform(m_impl->model->rows.set_text(static_cast<std::size_t>(row), text));
}

bool property_grid_t::set_checked(int row, bool checked)
{
    return m_impl->is_row(row) &&
           m_impl->perform(m_impl->model->rows.set_checked(static_cast<std::size_t>(row), checked));
}

bool property_grid_t::move_row(int from, int to)
{
    return m_impl->is_row(from) && m_impl->is_row(to) &&
           m_impl->perform(
               m_impl->model->rows.move(static_cast<std::size_t>(from), static_cast<std::size_t>(to)));
}

bool property_grid_t::delete_row(int row)
{
    if (!m_impl->is_row(row))
        return false;
    if (const auto& removed = m_impl->model->texts.removed)
        m_impl->announce(removed(get_text(row)));
    return m_impl->perform(m_impl->model->rows.remove(static_cast<std::size_t>(row)));
}

bool property_grid_t::undo()
{
    const auto change = m_impl->model->rows.undo();
    const bool done = m_impl->perform(change);
    if (done)
        set_current_row(
            static_cast<int>(change->kind == rows_change_t::kind_t::moved ? change->to : change->at));
    return done;
}

bool property_grid_t::redo()
{
    const auto change = m_impl->model->rows.redo();
    const bool done = m_impl->perform(change);
    if (done)
        set_current_row(
            static_cast<int>(change->kind == rows_change_t::kind_t::moved ? change->to : change->at));
    return done;
}

void property_grid_t::set_mark(int row, const row_mark_t& mark)
{
    if (!m_impl->is_row(row) || get_mark(row) == mark)
        return;
    m_impl->model->marks[get_key(row)] = mark;
    m_impl->model->RowChanged(static_cast<unsigned>(row));
}

row_mark_t property_grid_t::get_mark(int row) const
{
    const row_mark_t* mark = row < 0 ? nullptr : m_impl->model->find_mark(static_cast<std::size_t>(row));
    return mark ? *mark : row_mark_t();
}

int property_grid_t::get_current_row() const
{
    return m_impl->current();
}

void property_grid_t::set_current_row(int row)
{
    m_impl->set_current(row);
}

void property_grid_t::refresh()
{
    gtk_widget_queue_draw(GTK_WIDGET(m_impl->tree));
}

void property_grid_t::edit(int row)
{
    m_impl->edit(row, std::string());
}

bool property_grid_t::is_editing() const
{
    return m_impl->editor->is_active();
}

bool property_grid_t::has_typed_text() const
{
    return m_impl->editor->is_changed();
}

bool property_grid_t::commit()
{
    return m_impl->editor->commit();
}

gen_helpers2::signal_t<int>& property_grid_t::get_row_updated_signal()
{
    return m_impl->row_updated;
}

gen_helpers2::signal_t<>& property_grid_t::get_editing_finished_signal()
{
    return m_impl->editing_finished;
}

gen_helpers2::signal_t<>& property_grid_t::get_changed_signal()
{
    return m_impl->changed;
}

gen_helpers2::signal_t<click_data_t>& property_grid_t::get_more_signal()
{
    return m_impl->more;
}

gen_helpers2::signal_t<int>& property_grid_t::get_remove_signal()
{
    return m_impl->remove;
}

gen_helpers2::signal_t<int>& property_grid_t::get_current_changed_signal()
{
    return m_impl->current_changed;
}

} // namespace vdxpropgrid2
