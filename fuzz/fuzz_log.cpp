// What the in-place log is given: saved logs with their pictures, entries and lines in any order, and texts
// that are broken into rows. The first byte says which. Needs a display.
#include "check.h"
#include "html_body.h"
#include "log_view.h"
#include "shown_text.h"
#include "xpm.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/inplace_ctrl.h>
#include <gen_helpers2/assertion.h>
#include <gen_helpers2/strings.h>
#include <gen_helpers2/variant_bag_file.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>
#include <wx_helpers1/wrap_text.h>

#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include <fuzzer/FuzzedDataProvider.h>
#include <glib.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace commondlg3;
using namespace vdxcfrw7;
using gen_helpers2::path_t;
using gen_helpers2::variant_bag_t;

namespace {

struct app_t : wxApp
{
    using wxApp::DeletePendingObjects;
};
app_t* app;
inplace_ctrl_t* control;
log_view_t* view;
wxStaticText* label;

/// Everything that waits is done.
void settle()
{
    bool done = false; // a task behind all others
    wx_helpers1::tasks::Scheduler::Post([&done] { done = true; });
    while (!done || control->get_log().HasWork())
        g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    app->ProcessPendingEvents();
    app->DeletePendingObjects();
}

variant_bag_t loaded_and_saved(const variant_bag_t& bag)
{
    variant_bag_t saved;
    control->load(bag);
    settle();
    check(control->save(saved).succeeded() && !control->has_changes());
    control->clear();
    return saved;
}

void try_saved(const std::string& text)
{
    const wxImage image = image_from_xpm(text);
    if (image.IsOk()) {
        check(image.GetWidth() <= 1024 && image.GetHeight() <= 1024);
        const std::string written = image_to_xpm(image);
        check(image_to_xpm(image_from_xpm(written)) == written);
    }

    variant_bag_t given;
    const bool sound = gen_helpers2::load_from_string(text, given).succeeded();
    const variant_bag_t saved = loaded_and_saved(given);
    check(loaded_and_saved(saved) == saved);
    // By way of files, whether or not a worker has read the first one when its contents are asked for.
    control->load_file(path_t(write_scratch("given", text)));
    const path_t file(scratch_folder() + "/kept");
    if (text.size() % 2) {
        inplace_contents_t().save_later(file); // done behind the loading
        inplace_contents_t::wait_until_saved();
        settle();
    }
    control->take_contents().save_later(file, [](const auto& result) { check(result.succeeded()); });
    inplace_contents_t::wait_until_saved();
    variant_bag_t kept;
    check(gen_helpers2::load_variant_bag(file, kept).succeeded());
    check(!sound || loaded_and_saved(kept) == saved);
}

/// Whether a search should find it, by looking at every text.
bool is_anywhere(const std::string& needle)
{
    std::string storage;
    for (const auto& element : control->get_log().GetElements())
        for (std::size_t item = 0; item < number_of_items(*element); ++item) {
            if (is_found(*element, item) &&
                fold(text_of(*element, item, storage)).find(needle) != std::string::npos)
                return true;
        }
    return false;
}

/// How many lines a filter should hide.
std::size_t count_hidden(std::uint32_t severities, const std::string& filter)
{
    std::size_t count = 0;
    std::string storage;
    for (const auto& element : control->get_log().GetElements())
        for (std::size_t i = 0; i < element->GetLines().size(); ++i) {
            const line_t& line = element->GetLines().at(i);
            const bool passes = (severities == 0 || (line.severity & severities) != 0) &&
                                fold(get_shown_text(line, storage)).find(filter) != std::string::npos;
            count += line.has(line_t::status) || passes ? 0 : 1;
        }
    return count;
}

std::int64_t exact_height(log_layout_t& layout)
{
    control->get_log().AddWork(&layout, [&] { return layout.refine(true) != log_layout_t::left_t::nothing; });
    settle();
    layout.settle();
    check(layout.is_exact());
    check(layout.top() >= 0 && layout.top() <= layout.max_top());
    // What is seen stands one below the other and fills the window, or holds everything.
    std::int64_t y = 0;
    const auto items = layout.visible_items();
    for (std::size_t i = 0; i < items.size(); ++i) {
        check(i == 0 ? items[i].y <= 0 : items[i].y == y);
        y = items[i].y + items[i].height;
    }
    check(y >= std::min<std::int64_t>(layout.get_size().y, layout.total() - layout.top()));
    return layout.total();
}

void try_events(FuzzedDataProvider in)
{
    CEventLog& log = control->get_log();
    log_layout_t& layout = view->get_layout();
    std::vector<inplace_ctrl_t::tag_t> tags(1);
    const auto number = [&](int most) { return in.ConsumeIntegralInRange(0, most); };
    const auto text = [&] {
        std::string once = in.ConsumeRandomLengthString(80);
        std::string all;
        for (int i = number(9); i >= 0; --i)
            all += once;
        return all;
    };
    const auto message = [&] {
        standard_message_t::ptr_t record(new standard_message_t);
        record->caption = text();
        record->message = text();
        if (number(1)) {
            record->set_buttons(static_cast<standard_message_t::standard_buttons_t>(number(5)));
            record->picture = standard_message_t::get_icon_by_type(
                static_cast<standard_message_t::icon_types_t>(number(4)));
        }
        return record;
    };
    log.ScrollToEnd();
    layout.set_size(wxSize(300, 200));
    while (in.remaining_bytes()) {
        const auto tag = tags[static_cast<std::size_t>(number(static_cast<int>(tags.size()) - 1))];
        switch (number(10)) {
        case 0:
            tags.push_back(control->add_message(message(), {}));
            break;
        case 1: {
            progress_message_t::ptr_t record(new progress_message_t);
            record->caption = text();
            tags.push_back(control->add_progress(record, {}));
            break;
        }
        case 2:
        case 3:
            if (msngr2::IMessenger* messenger = control->get_messenger(tag)) {
                std::string said = text();
                const auto severity = static_cast<msngr2::ESeverity>(number(0x3f));
                const bool flood = number(63) == 0; // more than fit into a block, in a large piece of memory
                if (flood) {
                    // What has to be shaped would take seconds, which says nothing about a single line.
                    const char first = said.empty() ? 'x' : said.front();
                    said.assign(std::isalnum(static_cast<unsigned char>(first)) ? 130 : 8, first);
                }
                for (int i = flood ? int(line_store_t::block_size) + 1 : number(5); i >= 0; --i)
                    messenger->say(severity, said.c_str());
            }
            break;
        case 4:
            if (msngr2::IProgress* progress = control->get_progress(tag)) {
                progress->start(text().c_str(), number(100));
                progress->progressed(number(50));
                progress->message(text().c_str());
            }
            break;
        case 5:
            control->update_message(tag, message(), {});
            break;
        case 6:
            if (number(1))
                control->erase(tag);
            else
                check(control->take_contents().save(path_t(scratch_folder() + "/kept")).succeeded());
            break;
        case 7:
            layout.set_size(wxSize(number(1000), number(400)));
            break;
        case 8:
            log.ScrollTo(in.ConsumeIntegralInRange<std::int64_t>(-10, 3000));
            break;
        case 9: {
            const std::string needle = gen_helpers2::replace_invalid_utf8(text());
            check(log.Find(needle, number(1)) == (!needle.empty() && is_anywhere(fold(needle))));
            break;
        }
        case 10: {
            const int severities = number(7);
            const std::string filter = number(1) ? gen_helpers2::replace_invalid_utf8(text()) : "";
            log.SetFilter(severities, filter);
            settle();
            check(log.GetHiddenCount() == count_hidden(static_cast<std::uint32_t>(severities), fold(filter)));
            log.SelectAll();
            check(gen_helpers2::is_valid_utf8(log.GetSelectedHTML()));
            break;
        }
        }
        if (number(1))
            settle();
    }
    settle();
    const std::int64_t height = exact_height(layout);
    const wxSize size = layout.get_size();
    layout.set_size(size + wxSize(1, 0));
    exact_height(layout);
    layout.set_size(size);
    check(exact_height(layout) == height); // all of it measured anew
    log.SetFilter(0, {});
    control->clear();
    settle();
}

void try_texts(const std::string& text, int width)
{
    const wxString carried = wx_helpers1::to_wx(text);
    check(wx_helpers1::from_wx(carried) == text && gen_helpers2::is_valid_utf8(carried.utf8_string()));
    wxClientDC dc(view);
    int lines = 1;
    const std::string wrapped = wx_helpers1::wrap_text(text, width, view, lines, 0, dc);
    check(lines == 1 + std::count(wrapped.begin(), wrapped.end(), '\n'));
    check(wx_helpers1::wrap_text(text, width, view) == wrapped);
    const auto letters = [](std::string all) {
        all.erase(std::remove_if(all.begin(), all.end(), [](char c) { return c == ' ' || c == '\n'; }),
                  all.end());
        return all;
    };
    check(letters(wrapped) == letters(text));

    log_layout_t& layout = view->get_layout();
    std::vector<std::uint32_t> rows;
    for (const bool shape : {false, true}) {
        check(layout.text_font().break_rows(text, width, &rows, shape) == rows.size() && rows[0] == 0);
        check(std::adjacent_find(rows.begin(), rows.end(), std::greater_equal<>()) == rows.end());
        check(text.empty() || rows.back() < text.size());
    }
    text_shaper_t& shaper = layout.text_font().get_shaper();
    styled_text_t styled;
    read_styled_text(text, styled);
    check(styled.text.size() <= text.size() && (has_sequences(text) || styled.text == text));
    for (std::size_t i = 0; i < styled.runs.size(); ++i)
        check(styled.runs[i].begin < styled.text.size() &&
              (i == 0 || styled.runs[i - 1].begin < styled.runs[i].begin));
    check(styled.text.empty() ||
          shaper.break_rows(styled.text, width, &styled.runs).back() < styled.text.size());
    rows = shaper.break_rows(text, width);
    std::size_t paragraph = 0; // each is broken as it is by itself
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t end = i + 1 < rows.size() ? rows[i + 1] : text.size();
        if (i < 20) { // as many as a window shows
            const std::string_view row = first_line(std::string_view(text).substr(rows[i], end - rows[i]));
            const PangoDirection direction = direction_of(text, rows[i], PANGO_DIRECTION_LTR);
            check(shaper.byte_at(row, direction, width / 2) <= row.size());
            for (const auto& [left, right] : shaper.places_of(row, direction, row.size() / 3, row.size()))
                check(left <= right);
        }
        if (end < text.size() && !ends_line(text, end))
            continue;
        const std::string alone = text.substr(rows[paragraph], end - rows[paragraph]);
        check(shaper.break_rows(alone, width).size() == i + 1 - paragraph);
        paragraph = i + 1;
    }

    body_look_t look;
    look.set_window(*view);
    look.font = layout.text_font().get_font();
    look.ink = look.link = look.border = *wxBLACK;
    look.background = *wxWHITE;
    look.line_height = layout.text_font().get_line_height();
    html_body_t body(text, look);
    body.set_width(width / 2);
    check(body.set_width(width) == html_body_t(text, look).set_width(width));

    wx_helpers1::set_label_text(label, text);
    const wxSize natural = wx_helpers1::natural_size(label);
    check(wx_helpers1::height_for_width(label, natural.x + 1) == natural.y);
    check(wx_helpers1::height_for_width(label, width) >= natural.y || width > natural.x);
    wx_helpers1::set_wrap_width(label, width);
    wx_helpers1::set_selectable(label, true);
    wx_helpers1::select_label_text(label, true);
    check(wx_helpers1::get_selected_text(label).size() <= wx_helpers1::to_label(text).utf8_string().size());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    wxApp::SetInstance(app = new app_t);
    check(wxEntryStart(*argc, *argv));
    wxEventLoopBase::SetActive(new wxGUIEventLoop);
    g_log_set_writer_func(
        [](GLogLevelFlags level, const GLogField* fields, gsize count, gpointer) {
            if (level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL))
                g_log_writer_standard_streams(level, fields, count, nullptr);
            check(!(level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL)));
            return G_LOG_WRITER_HANDLED;
        },
        nullptr, nullptr);
    gen_helpers2::set_assertion_handler([](const gen_helpers2::assertion_t& assertion) {
        if (assertion.condition != "can_get<const char*>()") // a saved text that is none
            std::fprintf(stderr, "%s\n", assertion.condition.c_str());
        check(assertion.condition == "can_get<const char*>()");
    });
    wxSetAssertHandler([](const wxString&, int, const wxString&, const wxString& condition, const wxString&) {
        std::fprintf(stderr, "%s\n", condition.utf8_str().data());
        check(false);
    });
    auto product = std::make_shared<cfgmgr2::product_locations_t>();
    product->resource_directory = path_t(RESOURCE_DIR);
    product->locale_directory = path_t(LOCALE_DIR);
    cfgmgr2::IProductLocations::set(product);
    wx_helpers1::tasks::Scheduler::Initialize();
    wx_helpers1::ui_settings_t::initialize();
    auto* frame = new wxFrame(nullptr, wxID_ANY, "log");
    control = new inplace_ctrl_t(frame, false);
    view = static_cast<log_view_t*>(control->get_log().GetWindow());
    view->SetEvtHandlerEnabled(false); // the sizes of the layout are ours
    label = new wxStaticText(frame, wxID_ANY, "");
    settle();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const std::string rest(reinterpret_cast<const char*>(data) + 2, size - 2);
    switch (data[0] % 3) {
    case 0:
        try_saved(rest);
        break;
    case 1:
        try_events(FuzzedDataProvider(data + 1, size - 1));
        break;
    default:
        try_texts(rest, 1 + 4 * data[1]);
    }
    return 0;
}
