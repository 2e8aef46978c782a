#include "support.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <commondlg3/dialog_base.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/assertion.h>
#include <wx_helpers1/input_guard.h>
#include <wx_helpers1/painted.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/debug.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace test {
namespace {

std::mutex mutex; // assertions and warnings come from any thread
std::vector<std::string> assertions;
std::vector<std::string> failures;
std::vector<std::string> exceptions;

void fail(const std::string& text)
{
    std::lock_guard<std::mutex> lock(mutex);
    failures.push_back(text);
}

std::vector<std::string> take(std::vector<std::string>& texts)
{
    std::lock_guard<std::mutex> lock(mutex);
    return std::exchange(texts, {});
}

void on_toolkit_assert(const wxString& file, int line, const wxString&, const wxString& condition,
                       const wxString& text)
{
    fail((file + wxString::Format(":%d: ", line) + condition + " " + text).utf8_string());
}

// From 3.2.10 on a text field takes a handler away again, as it ends, that was gone after its last key.
bool is_toolkits_own([[maybe_unused]] const GLogField& message)
{
#if wxCHECK_VERSION(3, 2, 10)
    return std::string(static_cast<const char*>(message.value)).find("has no handler with id") !=
           std::string::npos;
#else
    return false;
#endif
}

GLogWriterOutput on_glib_log(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer)
{
    if (level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR)) {
        for (gsize i = 0; i < count; ++i)
            if (std::string(fields[i].key) == "MESSAGE" && !is_toolkits_own(fields[i]))
                fail(std::string("toolkit warning: ") + static_cast<const char*>(fields[i].value));
    }
    return G_LOG_WRITER_HANDLED;
}

void set_product(const std::string& resource_dir, const std::string& locale_dir,
                 const std::string& config_dir = {})
{
    auto product = std::make_shared<cfgmgr2::product_locations_t>();
    product->resource_directory = gen_helpers2::path_t(resource_dir);
    product->locale_directory = gen_helpers2::path_t(locale_dir);
    product->config_directory = gen_helpers2::path_t(config_dir);
    product->product_name = "Vorbex Performance Studio";
    product->product_short_name = "Vorbex";
    cfgmgr2::IProductLocations::set(product);
    cfgmgr2::reset_message_catalogs();
    cfgmgr2::set_language("en");
}

} // namespace

void install_handlers()
{
    wxSetAssertHandler(on_toolkit_assert);
    g_log_set_writer_func(on_glib_log, nullptr, nullptr);
    gen_helpers2::set_assertion_handler([](const gen_helpers2::assertion_t& assertion) {
        std::lock_guard<std::mutex> lock(mutex);
        assertions.push_back(assertion.condition);
    });
}

void end_test()
{
    settle();
    for (const std::string& text : take(failures))
        ADD_FAILURE() << text;
    for (const std::string& text : take(assertions))
        ADD_FAILURE() << "assertion that the test did not expect: " << text;
    for (const std::string& text : take(exceptions))
        ADD_FAILURE() << "exception that the test did not expect: " << text;
}

std::vector<std::string> take_assertions()
{
    return take(assertions);
}

void note_exception()
{
    std::string text = "unknown";
    try {
        throw;
    } catch (const std::exception& exception) {
        text = exception.what();
    } catch (...) {
    }
    std::lock_guard<std::mutex> lock(mutex);
    exceptions.push_back(text);
}

std::vector<std::string> take_exceptions()
{
    return take(exceptions);
}

wxFrame* main_window()
{
    return static_cast<wxFrame*>(wxTheApp->GetTopWindow());
}

void settle()
{
    // What was done through the display, by its own connection, has come to this one after that.
    gdk_display_sync(gdk_display_get_default());
    // Turns of at least half a millisecond; of longer ones on a busy machine, where threads and other programs
    // wait for theirs.
    int quiet_turns = 0;
    while (quiet_turns < 60) {
        ++quiet_turns;
        if (g_main_context_iteration(nullptr, FALSE) || wxTheApp->ProcessIdle())
            quiet_turns = 0;
        else
            usleep(500);
    }
}

bool wait_for(const std::function<bool()>& condition, int milliseconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        if (!g_main_context_iteration(nullptr, FALSE) && !wxTheApp->ProcessIdle())
            usleep(500);
    }
    return true;
}

int run_modal(const std::function<int()>& show, const std::function<void(wxTopLevelWindow*)>& act)
{
    wxWeakRef<wxTopLevelWindow> opened;
    wxTimer rescue;
    rescue.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        ADD_FAILURE() << "the window was left open";
        if (auto* dialog = wxDynamicCast(opened.get(), wxDialog))
            dialog->EndModal(wxID_CANCEL);
    });
    rescue.StartOnce(60000);
    // Where no window opens, the next one that does must find nobody here.
    const auto waiting = std::make_shared<bool>(true);
    wx_helpers1::when_next_window_is_painted([&, waiting](wxTopLevelWindow* window) {
        if (!*waiting)
            return;
        *waiting = false;
        opened = window;
        EXPECT_TRUE(wait_for([&] { return opened && opened->IsActive(); })) << "keys would go elsewhere";
        if (opened)
            act(window);
    });
    const int result = show();
    EXPECT_FALSE(*waiting) << "no window opened: nothing was looked at";
    *waiting = false;
    rescue.Stop();
    settle();
    return result;
}

int run(commondlg3::dialog_base_t& dialog, const std::function<void(wxTopLevelWindow*)>& act)
{
    return run_modal([&] { return dialog.show_modal(main_window()); }, act);
}

void send(wxEventType type, wxWindow* control, int number)
{
    wxCommandEvent event(type, control->GetId());
    event.SetEventObject(control);
    event.SetInt(number);
    control->ProcessWindowEvent(event);
}

void click(wxWindow* parent, const char* name)
{
    auto* button = commondlg3::from_xrc<wxButton>(parent, name);
    ASSERT_TRUE(button) << name;
    send(wxEVT_BUTTON, button);
}

void press(int key, int modifiers)
{
    if (modifiers == wxMOD_ALT) {
        // The simulator's Alt is Meta where the keyboard's map is newer.
        const std::string name = key == WXK_UP     ? "Up"
                                 : key == WXK_DOWN ? "Down"
                                                   : std::string(1, static_cast<char>(std::tolower(key)));
        EXPECT_EQ(0, std::system(("xdotool key alt+" + name).c_str()));
    } else {
        wxUIActionSimulator().Char(key, modifiers);
    }
    settle();
}

void type(const char* text)
{
    wxUIActionSimulator().Text(text);
    settle();
}

void drag(const wxPoint& from, const wxPoint& to)
{
    wxUIActionSimulator mouse;
    mouse.MouseMove(from);
    settle();
    mouse.MouseDown();
    settle();
    mouse.MouseMove(to);
    settle();
    mouse.MouseUp();
    settle();
}

std::string clipboard_text()
{
    wxTextDataObject data;
    wxClipboardLocker lock;
    EXPECT_TRUE(wxTheClipboard->GetData(data));
    return data.GetText().utf8_string();
}

product_guard_t::product_guard_t(const std::string& resource_dir, const std::string& locale_dir,
                                 const std::string& config_dir)
{
    set_product(resource_dir, locale_dir, config_dir);
}

void use_default_product()
{
    set_product(RESOURCE_DIR, LOCALE_DIR);
}

void let_unasked_windows_take_input()
{
    wx_helpers1::input_guard_times_t times;
    times.wait = 0;
    wx_helpers1::set_input_guard_times(times);
}

product_guard_t::~product_guard_t()
{
    use_default_product();
}

language_guard_t::language_guard_t(const std::string& language)
{
    cfgmgr2::set_language(language);
}

language_guard_t::~language_guard_t()
{
    cfgmgr2::set_language("en");
}

theme_guard_t::theme_guard_t(bool dark)
{
    using namespace wx_helpers1;
    ui_settings_t::get()->set_theme(dark ? theme_t::dark : theme_t::light);
    EXPECT_TRUE(wait_for([&] { return ui_settings_t::get()->is_dark() == dark; }));
    settle();
}

theme_guard_t::~theme_guard_t()
{
    wx_helpers1::ui_settings_t::get()->set_theme(wx_helpers1::theme_t::system);
    settle();
}

font_guard_t::font_guard_t(const char* font)
{
    g_object_set(gtk_settings_get_default(), "gtk-font-name", font, nullptr);
}

font_guard_t::~font_guard_t()
{
    gtk_settings_reset_property(gtk_settings_get_default(), "gtk-font-name");
    settle();
}

temp_dir_t::temp_dir_t()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "gui-test-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
}

temp_dir_t::~temp_dir_t()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace test
