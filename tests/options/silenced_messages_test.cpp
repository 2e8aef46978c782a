#include "probe.h"
#include "tools.h"

#include <commondlg3/silenced_messages_page.h>

#include <wx/uiaction.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using commondlg3::message_window_t;
using commondlg3::silenced_message_t;
using commondlg3::silenced_messages_pp_t;
using commondlg3::silenced_messages_t;
using names_t = std::vector<std::string>;

names_t names_of(const std::vector<silenced_message_t>& messages)
{
    names_t names;
    for (const silenced_message_t& message : messages)
        names.push_back(message.name);
    return names;
}

silenced_message_t named(const std::string& name)
{
    silenced_message_t message;
    message.name = name;
    message.main_message = "Message " + name;
    message.silenced_at = 1700000000;
    return message;
}

class SilencedMessages : public testing::Test
{
protected:
    silenced_messages_t m_all{cfgmgr2::make_memory_property_storage()};

    // Ticks the check box, if wanted, and ends the message by this button.
    int ask(int button_type, bool tick, const char* button)
    {
        return test::run_modal(
            [&] { return m_all.ask("a", test::sample_message(button_type), test::main_window()); },
            [&](wxTopLevelWindow* window) {
                commondlg3::from_xrc<wxCheckBox>(window, "m_checkBox5")->SetValue(tick);
                test::click(window, button);
            });
    }
    int ask_again(int button_type)
    {
        return m_all.ask("a", test::sample_message(button_type), test::main_window());
    }
};

// What is remembered is what was chosen with the box ticked, and only for the buttons that it was chosen from.
TEST_F(SilencedMessages, OnceSilencedTheAnswerIsGivenAtOnce)
{
    EXPECT_EQ(1, ask(1, false, "m_btn_ok"));
    EXPECT_EQ(2, ask(1, true, "m_btn_cancel")) << "No discards what was ticked";
    EXPECT_EQ(1, ask(1, true, "m_btn_ok"));
    EXPECT_EQ(1, ask_again(1));
    ASSERT_EQ((names_t{"a"}), names_of(m_all.get_all()));
    EXPECT_EQ(test::sample_message().details_message, m_all.get_all()[0].details_message);
    EXPECT_EQ(3, ask(3, false, "m_btn_ok")) << "Yes is no answer to OK and Cancel";
    m_all.restore({"a", "b"});
    EXPECT_EQ(0, ask(0, true, "m_btn_cancel"));
    EXPECT_EQ(0, ask_again(0));
    m_all.restore({"a"});
    EXPECT_EQ(5, test::run_modal([&] { return ask_again(5); },
                                 [](wxTopLevelWindow* window) {
                                     EXPECT_FALSE(
                                         commondlg3::from_xrc<wxWindow>(window, "m_checkBox5")->IsShown());
                                     test::click(window, "m_btn_ok");
                                 }))
        << "Retry would be answered for ever";
    commondlg3::message_options_t options;
    options.first = {"&Delete", true};
    test::run_modal([&] { return m_all.ask("b", test::sample_message(3), test::main_window(), options); },
                    [](wxTopLevelWindow* window) {
                        EXPECT_FALSE(commondlg3::from_xrc<wxWindow>(window, "m_checkBox5")->IsShown())
                            << "would destroy unseen";
                        window->Close();
                    });
}

TEST_F(SilencedMessages, CheckBoxForAHostsOwnMessage)
{
    message_window_t window = test::sample_message(0);
    window.check_box = m_all.make_check_box("a", window);
    test::run(window, [](wxTopLevelWindow* shown) {
        commondlg3::from_xrc<wxCheckBox>(shown, "m_checkBox5")->SetValue(true);
        test::click(shown, "m_btn_cancel");
    });
    EXPECT_EQ(message_window_t::result_none, commondlg3::show_modal(window, test::main_window()));
    EXPECT_TRUE(m_all.make_check_box("a", window)->is_checked());
    window.check_box->reset();
    EXPECT_FALSE(m_all.find("a"));
}

// Two programs silence messages at once; and whatever stands in the file, each message can still be shown.
TEST_F(SilencedMessages, FilesAreMergedAndDamageIsPassedOver)
{
    const test::temp_dir_t dir;
    const std::string file = dir.path() + "/settings.xml";
    test::make_file(file, "<bag version=\"1\"><child name=\"silenced_messages\">"
                          "<int name=\"message\">3</int><child name=\"message\"/>"
                          "<child name=\"message\"><string name=\"name\">a</string>"
                          "<string name=\"answer\">Yes</string><int name=\"button_type\">77</int>"
                          "<int name=\"silenced_at\">-5</int></child></child></bag>");
    gen_helpers2::error_code_t read;
    silenced_messages_t one(cfgmgr2::open_property_storage(gen_helpers2::path_t(file), read));
    silenced_messages_t other(cfgmgr2::open_property_storage(gen_helpers2::path_t(file), read));
    const auto damaged = one.find("a");
    ASSERT_TRUE(damaged);
    EXPECT_EQ(std::make_pair(7, std::int64_t(0)), std::make_pair(damaged->answer, damaged->silenced_at));
    m_all = one;
    EXPECT_EQ(1, ask(1, true, "m_btn_ok")) << "no answer is known";
    other.silence(named("b"));
    EXPECT_TRUE(one.save().succeeded());
    EXPECT_TRUE(other.save().succeeded());
    silenced_messages_t both(cfgmgr2::open_property_storage(gen_helpers2::path_t(file), read));
    EXPECT_EQ(2u, both.get_all().size());
    EXPECT_EQ(1, both.find("a")->answer);
    silenced_messages_t nothing(nullptr);
    nothing.silence(named("a"));
    EXPECT_FALSE(nothing.find("a"));
}

class SilencedPage : public SilencedMessages
{
protected:
    void open()
    {
        m_page = new silenced_messages_pp_t(m_all);
        m_page->create(test::main_window());
        m_page->SetSize(500, 400);
        m_page->get_changed_signal().connect(m_page, [this] { ++m_changes; });
        control<wxWindow>("m_list_area")->GetChildren().front()->SetFocus();
        test::settle();
    }
    ~SilencedPage() override
    {
        if (m_page)
            m_page->Destroy();
        test::settle();
    }
    template <class T>
    T* control(const char* name)
    {
        return commondlg3::from_xrc<T>(m_page, name);
    }

    silenced_messages_pp_t* m_page = nullptr;
    int m_changes = 0;
};

TEST_F(SilencedPage, KeysBringBackAndNothingIsWrittenBeforeItIsSaved)
{
    for (const char* name : {"d", "c", "b", "a"})
        m_all.silence(named(name));
    open();
    test::press(WXK_DOWN);
    test::press(WXK_DELETE);
    EXPECT_EQ((names_t{"a", "c", "d"}), names_of(m_page->get_messages()));
    EXPECT_EQ((names_t{"b"}), m_page->get_restored());
    test::press(WXK_DOWN, wxMOD_SHIFT);
    EXPECT_FALSE(control<wxButton>("m_btn_show")->IsEnabled()) << "which of two?";
    test::click(m_page, "m_btn_restore");
    EXPECT_EQ((names_t{"a"}), names_of(m_page->get_messages()));
    EXPECT_EQ(4u, m_all.get_all().size()) << "was written before it was saved";
    test::run_modal(
        [&] {
            test::click(m_page, "m_btn_show");
            return 0;
        },
        [](wxTopLevelWindow* window) {
            EXPECT_EQ("Message a",
                      commondlg3::from_xrc<wxStaticText>(window, "m_main_instructions")->GetLabel());
            window->Close();
        });
    control<wxWindow>("m_list_area")->GetChildren().front()->SetFocus();
    auto* elsewhere = new wxButton(test::main_window(), wxID_ANY, "OK");
    m_page->restore_all();
    EXPECT_TRUE(elsewhere->HasFocus()) << "no key is heard any more";
    elsewhere->Destroy();
    EXPECT_TRUE(control<wxWindow>("m_none")->IsShown());
    EXPECT_FALSE(control<wxButton>("m_btn_restore_all")->IsEnabled());
    EXPECT_TRUE(m_page->is_changed());
    m_page->restore({-1, 5});
    EXPECT_EQ(3, m_changes);
    m_page->load_settings();
    m_page->restore_all(); // before the toolkit has scrolled to the selected row
    test::settle();
    m_page->load_settings();
    EXPECT_EQ(4u, m_page->get_messages().size());
    m_page->restore({0, 3, 3});
    EXPECT_TRUE(m_page->save_settings());
    EXPECT_EQ((names_t{"b", "c"}), names_of(m_all.get_all()));
    EXPECT_FALSE(m_page->is_changed());
}

TEST_F(SilencedPage, ScrollsToTheRowAfterTheRestoredOne)
{
    for (int i = 0; i < 300; ++i)
        m_all.silence(named(std::to_string(i)));
    open();
    auto* list = dynamic_cast<wxDataViewCtrl*>(control<wxWindow>("m_list_area")->GetChildren().front());
    ASSERT_TRUE(list);
    for (const int row : {250, 20}) {
        m_page->restore({row});
        test::settle();
        const wxRect place = list->GetItemRect(list->GetSelection());
        EXPECT_TRUE(place.height > 0 && list->GetClientRect().Contains(place.GetPosition()))
            << row << ": " << place.y << ", " << place.height;
    }
}

// Two programs on one file: what the other has silenced meanwhile is on the page, and can be brought back.
TEST(SilencedMessagesPage, GoesByTheFileThatAnotherProgramHasWritten)
{
    const test::temp_dir_t dir;
    const auto open_file = [&] {
        const auto file = std::make_shared<commondlg3::settings_file_t>(dir.path() + "/preferences.xml");
        EXPECT_TRUE(file->load().succeeded());
        return file;
    };
    const auto silence_in_other = [&](const std::string& name) {
        silenced_messages_t other(open_file()->get());
        other.silence(named(name));
        EXPECT_TRUE(other.save().succeeded());
    };
    silence_in_other("a");
    commondlg3::silenced_messages_page_t page(open_file());
    EXPECT_EQ(1U, page.get_settings().size());
    auto* shown = dynamic_cast<silenced_messages_pp_t*>(page.create(test::main_window()));
    silence_in_other("b");
    ASSERT_TRUE(page.load().succeeded());
    page.show_kept();
    EXPECT_EQ(2U, page.get_settings().size());
    shown->restore_all();
    EXPECT_TRUE(page.is_changed());
    page.store();
    ASSERT_TRUE(page.save().succeeded());
    EXPECT_EQ(names_t(), names_of(silenced_messages_t(open_file()->get()).get_all()));
    shown->Destroy();
}

} // namespace
