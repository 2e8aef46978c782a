#include "probe.h"
#include "support.h"

#include <wx_helpers1/text.h>

#include <wx/toplevel.h>

namespace {

using test::probe_dialog_t;
using test::run_modal;

struct fields_t
{
    explicit fields_t(wxWindow* parent)
        : name(commondlg3::from_xrc<wxTextCtrl>(parent, "m_name")),
          notes(commondlg3::from_xrc<wxTextCtrl>(parent, "m_notes"))
    {
    }
    wxTextCtrl* name;
    wxTextCtrl* notes;
};

// Runs `change` while the dialog is up and answers with the texts of the message windows that it brought up.
std::vector<std::string> messages_of(probe_dialog_t& dialog, const std::function<void(fields_t)>& change)
{
    std::vector<std::string> messages;
    run_modal([&] { return dialog.show_modal(test::main_window()); },
              [&](wxTopLevelWindow*) {
                  run_modal(
                      [&] {
                          change(fields_t(&dialog));
                          return 0;
                      },
                      [&](wxTopLevelWindow* message) {
                          for (const char* label : {"m_main_instructions", "m_supplemental_instructions"})
                              messages.push_back(wx_helpers1::from_wx(
                                  commondlg3::from_xrc<wxStaticText>(message, label)->GetLabel()));
                          test::press(WXK_ESCAPE);
                      });
                  dialog.end_dialog(wxID_CANCEL);
              });
    return messages;
}

TEST(Limits, SingleLineRefusesWhatIsTooLongAndSaysWhy)
{
    probe_dialog_t dialog("dlg.example");
    dialog.register_limits = [&] { dialog.set_max_len_options(fields_t(&dialog).name, {"élan", 5}); };
    wxString kept;
    const auto messages = messages_of(dialog, [&](fields_t fields) {
        fields.name->ChangeValue("12345");
        fields.name->SetFocus();
        fields.name->SetInsertionPointEnd();
        test::type("6");
        kept = fields.name->GetValue();
    });
    EXPECT_EQ("12345", kept);
    ASSERT_EQ(2u, messages.size()) << "one message for the change";
    EXPECT_NE(std::string::npos, messages[0].find("Élan")) << messages[0];
    EXPECT_NE(std::string::npos, messages[1].find("Vorbex Performance Studio")) << messages[1];
    EXPECT_NE(std::string::npos, messages[1].find("5")) << messages[1];
}

TEST(Limits, SeveralLinesAreCutToExactlyTheLimitWithOneMessage)
{
    probe_dialog_t dialog("dlg.example");
    dialog.register_limits = [&] { dialog.set_max_len_options(fields_t(&dialog).notes, {"", 10}); };
    wxString kept;
    const auto messages = messages_of(dialog, [&](fields_t fields) {
        fields.notes->SetValue(wxString::FromUTF8("日本語のテキスト、とても長い"));
        kept = fields.notes->GetValue();
    });
    EXPECT_EQ(wxString::FromUTF8("日本語のテキスト、と"), kept); // characters, not bytes
    ASSERT_EQ(2u, messages.size());
    EXPECT_EQ(0u, messages[0].find("Text ")) << messages[0]; // the catalog's name for a nameless field
}

// A details key of the window's own replaces the body; one that gives an empty text falls back to the shared
// body.
TEST(Limits, DetailsKeyIsTheBodyOfTheMessage)
{
    probe_dialog_t dialog("dlg.example");
    dialog.register_limits = [&] {
        dialog.set_max_len_options(fields_t(&dialog).notes, {"Notes", 3, "path.invalid_file"});
    };
    const auto messages = messages_of(dialog, [&](fields_t fields) { fields.notes->SetValue("12345"); });
    ASSERT_EQ(2u, messages.size());
    EXPECT_EQ(std::string::npos, messages[1].find("at most")) << messages[1];
    EXPECT_EQ(std::string::npos, messages[1].find("not found")) << messages[1];
}

TEST(Limits, UnregisteredAndMinusOneMeanTenThousandAndDeeperControlsAreLeftAlone)
{
    probe_dialog_t dialog("dlg.example");
    wxTextCtrl* deep = nullptr;
    dialog.register_limits = [&] {
        auto* panel = new wxPanel(&dialog);
        deep = new wxTextCtrl(panel, wxID_ANY);
        dialog.set_max_len_options(fields_t(&dialog).notes, {"Notes", -1});
    };
    const auto messages = messages_of(dialog, [&](fields_t fields) {
        const wxString just_fits('x', 10000);
        fields.name->SetValue(just_fits);
        EXPECT_EQ(10000u, fields.name->GetValue().length());
        fields.notes->SetValue(just_fits);
        EXPECT_EQ(10000u, fields.notes->GetValue().length());
        deep->SetValue(just_fits + "x");
        EXPECT_EQ(10001u, deep->GetValue().length());
        fields.notes->SetValue(just_fits + "x");
        EXPECT_EQ(10000u, fields.notes->GetValue().length());
    });
    EXPECT_EQ(2u, messages.size()) << "only the text beyond the limit brings up a message";
    EXPECT_EQ(10000, dialog.gen_max_len_options(deep).max_length);
}

} // namespace
