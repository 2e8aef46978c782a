#include "probe.h"
#include "support.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/file_finder_pp.h>
#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/search_dirs_panel.h>
#include <wx_helpers1/ui_settings.h>

#include <filesystem>
#include <string>

namespace {

using test::probe_dialog_t;

TEST(MissingResources, WindowsAnswerAndAreTriedAgain)
{
    const test::temp_dir_t dir;
    const test::product_guard_t product(dir.path(), LOCALE_DIR);
    EXPECT_EQ(7, commondlg3::show_modal(test::sample_message(), test::main_window()))
        << "a message window that cannot load";
    probe_dialog_t dialog("dlg.example");
    EXPECT_EQ(0, dialog.show_modal(test::main_window()));
    EXPECT_FALSE(dialog.show_nonmodal(test::main_window(), true));
    EXPECT_FALSE(dialog.is_loaded());
    dialog.end_dialog(3);
    dialog.on_update_ui_settings();
    EXPECT_EQ(3, dialog.get_return_code());

    // The installation is repaired while the program runs.
    for (const char* archive : {"commondlg3.dat", "gallery.dat"})
        std::filesystem::copy_file(std::string(RESOURCE_DIR) + "/" + archive, dir.path() + "/" + archive);
    EXPECT_EQ(5, test::run(dialog, [&](wxTopLevelWindow*) { dialog.end_dialog(5); }));
    EXPECT_EQ(1, dialog.calls["init"]);
    EXPECT_EQ(0, test::run(test::sample_message(), [](wxTopLevelWindow* shown) { shown->Close(); }));
}

// Those that no preferences dialog shows.
TEST(MissingResources, EmptyPagesAndDialogsDoNoHarm)
{
    using namespace commondlg3;
    const test::temp_dir_t dir;
    const test::product_guard_t product(dir.path(), LOCALE_DIR, dir.path());
    auto* host = new wxFrame(test::main_window(), wxID_ANY, "host");
    pref_base_t* const pages[] = {new search_dirs_panel_t(FF_2_13::make_search_dir_container(nullptr)),
                                  new file_finder_pp_t(FF_2_13::make_search_dir_container(nullptr))};
    for (pref_base_t* page : pages) {
        page->create(host);
        page->on_update_ui_settings();
        page->on_ok();
        EXPECT_TRUE(page->GetChildren().empty());
    }
    host->Destroy();
    ask_dlg_t ask;
    clipboard_dlg_t clipboard;
    opt_in_dlg_t consent(opt_in_pp_t::user_consent_t::given);
    dialog_base_t* const dialogs[] = {&ask, &clipboard, &consent};
    for (dialog_base_t* dialog : dialogs) {
        EXPECT_EQ(0, dialog->show_modal(test::main_window()));
        dialog->on_ok();
    }
    EXPECT_EQ(opt_in_pp_t::user_consent_t::given, consent.get_consent());
}

// Everything asserts, nothing ends: a host that forgot to make the settings still gets its answers.
TEST(MissingResources, SettingsAreAnAssertionEach)
{
    wx_helpers1::ui_settings_t::shutdown();
    probe_dialog_t dialog("dlg.example");
    EXPECT_EQ(4, test::run(dialog, [&](wxTopLevelWindow*) { dialog.end_dialog(4); }));
    EXPECT_EQ(2, test::run(test::sample_message(1), [](wxTopLevelWindow* shown) { shown->Close(); }));
    const auto assertions = test::take_assertions();
    ASSERT_FALSE(assertions.empty());
    for (const std::string& text : assertions)
        EXPECT_EQ("m_ptr != 0", text);
    wx_helpers1::ui_settings_t::initialize();
}

} // namespace
