#include "probe.h"
#include "support.h"

#include <show_code.h>
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

// A window whose file was renamed would have no code to show.
TEST(MissingResources, EachEntryOfTheGalleryHasItsSource)
{
    const test::product_guard_t product(RESOURCE_DIR, LOCALE_DIR);
    for (const gallery::entry_t& entry : gallery::entries())
        EXPECT_TRUE(gallery::source_of(entry).is_file()) << entry.id;
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
