#include "tools.h"

#include <commondlg3/form_page.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/resources.h>

#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace {

using commondlg3::from_xrc;
using gen_helpers2::error_code_t;
using gen_helpers2::variant_bag_t;

/// A disk that does not answer until it is released.
class gate_t
{
public:
    void pass()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_open; });
    }
    void set_open(bool open)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_open = open;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = true;
};

/// The gallery's form, in a file that a test chooses.
class form_t : public commondlg3::form_page_t
{
public:
    form_t(const std::string& file, const std::string& name, std::shared_ptr<gate_t> disk)
        : form_page_t(std::make_shared<commondlg3::settings_file_t>(file), name,
                      {"gallery.dat", "gallery.xrc", "pref.sampling", "gallery"}),
          m_disk(std::move(disk))
    {
        add("interval", "m_interval", 10);
        add("note", "m_note", "");
    }
    std::string get_title() const override { return get_name(); }
    error_code_t load() override
    {
        m_disk->pass();
        return form_page_t::load();
    }
    error_code_t save() override
    {
        m_disk->pass();
        return form_page_t::save();
    }
    problem_t validate() override
    {
        auto* note = dynamic_cast<wxTextCtrl*>(find("m_note"));
        return note && note->GetValue() == "wrong" ? problem_t{"This note is wrong.", note} : problem_t();
    }

private:
    std::shared_ptr<gate_t> m_disk;
};

class PreferencesFrame : public testing::Test
{
protected:
    ~PreferencesFrame() override { m_disk->set_open(true); }

    int run(const std::function<void(wxTopLevelWindow*)>& act)
    {
        commondlg3::preferences_frame_t frame;
        frame.set_settings_folder(gen_helpers2::path_t(m_dir.path()));
        for (const char* name : {"first", "second"})
            frame.add_page(std::make_shared<form_t>(m_dir.path() + "/" + name + ".xml", name, m_disk));
        return test::run(frame, act);
    }
    static void select(wxWindow* dialog, unsigned page)
    {
        auto* list = from_xrc<wxDataViewTreeCtrl>(dialog, "m_pages");
        wxDataViewItemArray rows;
        list->GetStore()->GetChildren(wxDataViewItem(), rows);
        list->Select(rows[page]);
        wxDataViewEvent event(wxEVT_DATAVIEW_SELECTION_CHANGED, list, rows[page]);
        list->ProcessWindowEvent(event);
    }
    static std::string title(wxWindow* dialog, unsigned page)
    {
        auto* list = from_xrc<wxDataViewTreeCtrl>(dialog, "m_pages");
        wxDataViewItemArray rows;
        list->GetStore()->GetChildren(wxDataViewItem(), rows);
        return list->GetItemText(rows[page]).utf8_string();
    }
    // Two pages are of one form: the one that is seen stands in the area.
    static wxTextCtrl* note(wxWindow* dialog)
    {
        return from_xrc<wxTextCtrl>(from_xrc<wxWindow>(dialog, "m_page_area"), "m_note");
    }
    static wxButton* button(wxWindow* dialog, const char* name) { return from_xrc<wxButton>(dialog, name); }
    static bool is_seen(wxWindow* dialog, const char* name)
    {
        return from_xrc<wxWindow>(dialog, name)->IsShownOnScreen();
    }
    /// Presses the n-th button of the line above the page.
    static void answer_notice(wxWindow* dialog, int number)
    {
        for (wxWindow* child : from_xrc<wxWindow>(dialog, "m_notice")->GetChildren())
            if (auto* button = dynamic_cast<wxButton*>(child); button && number-- == 0)
                test::send(wxEVT_BUTTON, button);
    }
    std::string file(const char* name) const { return m_dir.path() + "/" + name + ".xml"; }
    bool holds(const char* name, const char* text) const
    {
        return std::filesystem::exists(file(name)) &&
               test::read_file(file(name)).find(text) != std::string::npos;
    }

    const test::temp_dir_t m_dir;
    const std::shared_ptr<gate_t> m_disk = std::make_shared<gate_t>();
};

TEST_F(PreferencesFrame, WritesAllPagesOrNone)
{
    std::filesystem::create_directory(file("second")); // can neither be read nor written
    test::messages_t messages;
    EXPECT_EQ(wxID_OK, run([&](wxTopLevelWindow* dialog) {
                  for (unsigned page : {0U, 1U}) {
                      select(dialog, page);
                      note(dialog)->SetValue("kept");
                  }
                  EXPECT_EQ("first \xE2\x80\xA2", title(dialog, 0));
                  ASSERT_TRUE(test::wait_for([&] { return messages.shown.size() == 1; }));
                  test::click(dialog, "m_btn_ok");
                  ASSERT_EQ(2U, messages.shown.size());
                  EXPECT_EQ("Your preferences could not be saved", messages.shown[1].first);
                  EXPECT_FALSE(std::filesystem::exists(file("first")));
                  EXPECT_EQ("first \xE2\x80\xA2", title(dialog, 0)) << "it is still to be saved";
                  std::filesystem::remove(file("second"));
                  test::click(dialog, "m_btn_ok");
                  answer_notice(dialog, 1); // somebody has changed what is there: keep what is entered
                  test::click(dialog, "m_btn_ok");
              }));
    EXPECT_TRUE(holds("first", "kept") && holds("second", "kept"));
}

// As rows of the toolkit's list, that a click edits and Ctrl+Space takes the selection from.
TEST_F(PreferencesFrame, TheTitleOfAPageIsNeitherEditedNorLeft)
{
    run([&](wxTopLevelWindow* dialog) {
        auto* list = from_xrc<wxDataViewTreeCtrl>(dialog, "m_pages");
        const wxDataViewItem row = list->GetNthChild(wxDataViewItem(), 1);
        const wxRect place = list->GetItemRect(row);
        wxUIActionSimulator mouse;
        for (const int step : {-15, 15}) { // far from each other: no double click
            mouse.MouseMove(list->ClientToScreen(place.GetPosition() +
                                                 wxPoint(place.width / 2 + step, place.height / 2)));
            test::settle();
            mouse.MouseClick();
            ASSERT_TRUE(test::wait_for([&] { return list->HasFocus() && list->GetSelection() == row; }));
            test::settle();
        }
        EXPECT_FALSE(GTK_IS_ENTRY(gtk_window_get_focus(GTK_WINDOW(dialog->GetHandle()))));
        test::press(WXK_SPACE, wxMOD_CONTROL);
        EXPECT_TRUE(test::wait_for([&] { return list->GetSelection() == row; })) << "its page is seen";
        test::click(dialog, "m_btn_cancel");
    });
}

TEST_F(PreferencesFrame, ShowsTheFirstThingThatIsWrongAndWritesNothing)
{
    run([&](wxTopLevelWindow* dialog) {
        note(dialog)->SetValue("right");
        select(dialog, 1);
        note(dialog)->SetValue("wrong");
        select(dialog, 0);
        test::click(dialog, "m_btn_ok");
        EXPECT_TRUE(dialog->IsShown() && is_seen(dialog, "m_notice"));
        EXPECT_EQ("wrong", note(dialog)->GetValue()) << "its page is seen";
        EXPECT_TRUE(test::wait_for([&] { return note(dialog)->HasFocus(); }));
        EXPECT_FALSE(std::filesystem::exists(file("first")));
        note(dialog)->SetValue("right");
        test::click(dialog, "m_btn_ok");
    });
    EXPECT_TRUE(holds("first", "right") && holds("second", "right"));
}

TEST_F(PreferencesFrame, OffersWhatAnotherProgramHasWrittenAndKeepsWhatWasEntered)
{
    const auto theirs = [&](const char* note) {
        test::make_file(file("first"),
                        std::string("<bag version=\"1\"><child name=\"first\"><string name=\"note\">") +
                            note + "</string></child></bag>");
    };
    EXPECT_EQ(wxID_OK, run([&](wxTopLevelWindow* dialog) {
                  from_xrc<wxSpinCtrl>(dialog, "m_interval")->SetValue(77);
                  theirs("one");
                  test::click(dialog, "m_btn_ok");
                  EXPECT_TRUE(dialog->IsShown() && is_seen(dialog, "m_notice"));
                  EXPECT_FALSE(holds("first", "77"));
                  answer_notice(dialog, 0);
                  EXPECT_EQ("one", note(dialog)->GetValue());
                  EXPECT_EQ(77, from_xrc<wxSpinCtrl>(dialog, "m_interval")->GetValue());
                  note(dialog)->SetValue("mine");
                  theirs("two");
                  test::click(dialog, "m_btn_ok");
                  answer_notice(dialog, 1);
                  test::click(dialog, "m_btn_ok");
              }));
    EXPECT_TRUE(holds("first", "mine") && holds("first", "77")) << test::read_file(file("first"));
}

TEST_F(PreferencesFrame, ADiskThatHangsKeepsNobodyWaiting)
{
    m_disk->set_open(false);
    run([&](wxTopLevelWindow* dialog) {
        EXPECT_TRUE(is_seen(dialog, "m_waiting"));
        m_disk->set_open(true);
        ASSERT_TRUE(test::wait_for([&] { return note(dialog) && note(dialog)->IsShownOnScreen(); }));
        EXPECT_FALSE(is_seen(dialog, "m_waiting"));
        note(dialog)->SetValue("late");
        m_disk->set_open(false);
        test::click(dialog, "m_btn_ok");
        EXPECT_TRUE(is_seen(dialog, "m_notice"));
        EXPECT_FALSE(button(dialog, "m_btn_ok")->IsEnabled());
        test::click(dialog, "m_btn_cancel");
    });
    m_disk->set_open(true);
    EXPECT_TRUE(test::wait_for([&] { return holds("first", "late"); })) << "what was begun goes on";
}

TEST_F(PreferencesFrame, AFormTakesNothingThatItCannotHold)
{
    test::make_file(file("first"),
                    "<bag version=\"1\"><child name=\"first\"><string name=\"interval\">x</string>"
                    "<string name=\"note\">a&amp;\\xFF</string></child></bag>");
    form_t page(file("first"), "first", m_disk);
    ASSERT_TRUE(page.load().succeeded());
    page.create(test::main_window());
    EXPECT_FALSE(page.is_changed());
    const variant_bag_t before = page.get_settings();
    EXPECT_EQ(10, before.get<gen_helpers2::variant_t>("interval").get<int>());
    EXPECT_EQ("a&\xFF", before.find_text("note").value_or(""));
    variant_bag_t hostile;
    hostile.put("interval", 1000000);
    hostile.put("note", 5);
    hostile.put("unknown", true);
    page.set_settings(hostile);
    EXPECT_EQ(before, page.get_settings());
    page.store();
    ASSERT_TRUE(page.save().succeeded());
    EXPECT_TRUE(holds("first", "a&amp;\\xFF"));
}

TEST_F(PreferencesFrame, OneThatEndsBeforeItIsShownServesAgain)
{
    const auto disk = m_disk;
    auto* frame = new commondlg3::preferences_frame_t;
    frame->add_page(std::make_shared<form_t>(file("first"), "first", disk));
    wxTheApp->CallAfter([frame] { frame->EndModal(wxID_OK); });
    frame->show_modal(test::main_window());
    run([](wxTopLevelWindow* other) { other->Close(); });
    test::settle(); // now the toolkit hears that it was on the screen
    test::run(*frame, [](wxTopLevelWindow* window) {
        note(window)->SetValue("again");
        test::click(window, "m_btn_ok");
    });
    EXPECT_TRUE(holds("first", "again"));
    frame->Destroy();
}

} // namespace
