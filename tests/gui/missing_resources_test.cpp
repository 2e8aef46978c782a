#include "probe.h"
#include "support.h"

#include <commondlg3/message_window.h>
#include <wx_helpers1/image_loader.h>
#include <wx_helpers1/resource_loader.h>
#include <wx_helpers1/ui_settings.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

using test::probe_dialog_t;

commondlg3::message_window_t sample()
{
    commondlg3::message_window_t window;
    window.main_message = "text";
    return window;
}

TEST(MissingResources, WindowsAnswerAndAreTriedAgain)
{
    const test::temp_dir_t dir;
    const test::product_guard_t product(dir.path(), LOCALE_DIR);
    EXPECT_EQ(7, commondlg3::show_modal(sample(), test::main_window()))
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
    EXPECT_EQ(5, test::run_modal([&] { return dialog.show_modal(test::main_window()); },
                                 [&](wxTopLevelWindow*) { dialog.end_dialog(5); }));
    EXPECT_EQ(1, dialog.calls["init"]);
    EXPECT_EQ(0, test::run_modal([&] { return commondlg3::show_modal(sample(), test::main_window()); },
                                 [&](wxTopLevelWindow* shown) { shown->Close(); }));
}

TEST(MissingResources, ObjectsAndDamageAreToldApart)
{
    using wx_helpers1::resource_loader_t;
    const test::temp_dir_t dir;
    const std::string plain = dir.path() + "/broken.xrc";
    std::ofstream(plain) << "<resource><object class='wxDialog' name='a'>";
    EXPECT_EQ(resource_loader_t::state_t::no_resource, resource_loader_t(plain, "commondlg").examine("a"));
    const std::string file = commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc");
    EXPECT_EQ(resource_loader_t::state_t::no_object,
              resource_loader_t(file, "commondlg").examine("dlg.none"));
    EXPECT_EQ(resource_loader_t::state_t::ok,
              resource_loader_t(file, "commondlg").examine("dlg.error_warning_dialog"));
    wx_helpers1::image_loader_t pictures(dir.path() + "/none.dat#zip:images.xrc");
    EXPECT_TRUE(pictures.load_static_picture("error24").is_empty());
    EXPECT_TRUE(pictures.load_animation("progress").is_empty());
}

// Everything asserts, nothing ends: a host that forgot to make the settings still gets its answers.
TEST(MissingResources, SettingsAreAnAssertionEach)
{
    wx_helpers1::ui_settings_t::shutdown();
    probe_dialog_t dialog("dlg.example");
    EXPECT_EQ(4, test::run_modal([&] { return dialog.show_modal(test::main_window()); },
                                 [&](wxTopLevelWindow*) { dialog.end_dialog(4); }));
    EXPECT_EQ(7, test::run_modal(
                     [&] {
                         auto window = sample();
                         window.button_type = commondlg3::message_window_t::button_type_t::none;
                         return commondlg3::show_modal(window, test::main_window());
                     },
                     [&](wxTopLevelWindow* shown) { shown->Close(); }));
    const auto assertions = test::take_assertions();
    ASSERT_FALSE(assertions.empty());
    for (const std::string& text : assertions)
        EXPECT_EQ("m_ptr != 0", text);
    wx_helpers1::ui_settings_t::initialize();
}

} // namespace
