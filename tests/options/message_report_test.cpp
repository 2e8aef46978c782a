#include "probe.h"
#include "tools.h"

#include <commondlg3/message_options.h>

#include <wx/filedlg.h>

#include <string>
#include <unistd.h>

namespace {

// The file is written whole, on another thread, and only over one that the user gives up.
TEST(MessageReport, IsSavedWhereTheUserSays)
{
    const test::temp_dir_t dir;
    const std::string file = dir.path() + "/report.txt";
    commondlg3::message_options_t options;
    options.offers_report = true;
    options.get_report = [] { return "version 1"; };
    int questions = 0;
    const test::chooser_answer_t answers([&](wxDialog* dialog) -> int {
        if (wxDynamicCast(dialog, wxFileDialog) || dialog->GetParent() == test::main_window())
            return wxID_NONE; // is shown
        return ++questions == 1 ? wxID_CANCEL : wxID_OK;
    });
    test::run_modal(
        [&] { return commondlg3::show_modal(test::sample_message(1), options, test::main_window()); },
        [&](wxTopLevelWindow* window) {
            const auto save_as = [&](const std::string& chosen) {
                std::string start;
                test::answer_for_real(chosen, start);
                test::send(wxEVT_BUTTON, wxWindow::FindWindowByName("m_btn_save_report", window));
            };
            test::make_file(file, "precious");
            save_as(file);
            EXPECT_TRUE(test::wait_for([&] { return questions == 1; }));
            test::settle();
            EXPECT_EQ("precious", test::read_file(file)) << "was not to be replaced";
            save_as(file);
            EXPECT_TRUE(test::wait_for([&] { return test::read_file(file) != "precious"; }));
            EXPECT_NE(std::string::npos, test::read_file(file).find("write: ENOSPC\n\nversion 1\n"));

            const std::string not_ours = dir.path() + "/other.txt";
            ASSERT_EQ(0, symlink("/proc/version", not_ours.c_str()));
            save_as(not_ours);
            EXPECT_TRUE(test::wait_for([&] { return questions == 4; })) << "nobody was told that it failed";
            window->Close();
        });
}

} // namespace
