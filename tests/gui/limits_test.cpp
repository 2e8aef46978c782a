#include "probe.h"
#include "support.h"

#include <wx_helpers1/text.h>

#include <wx/clipbrd.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

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
                          test::settle(); // the message comes once the insertion has ended
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

TEST(Limits, MessageNamesTheFieldTheProductAndTheLimit)
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

void put_on_clipboard(const wxString& text, bool primary)
{
    wxTheClipboard->UsePrimarySelection(primary);
    EXPECT_TRUE(wxTheClipboard->Open());
    wxTheClipboard->SetData(new wxTextDataObject(text));
    wxTheClipboard->Close();
    wxTheClipboard->UsePrimarySelection(false);
}

// A field that gets the focus may take the selection over: the text is selected elsewhere after that.
void middle_click_behind_text(wxTextCtrl* ctrl, const wxString& text)
{
    put_on_clipboard(text, true);
    wxUIActionSimulator mouse;
    const wxSize size = ctrl->GetClientSize();
    mouse.MouseMove(ctrl->ClientToScreen(wxPoint(size.x - 20, std::min(size.y / 2, 12))));
    test::settle();
    mouse.MouseClick(wxMOUSE_BTN_MIDDLE);
    test::settle();
}

// While the toolkit inserts a text it holds on to a place in the control: a careless cut there ends the
// process.
TEST(Limits, WhateverTheDoorWhatFitsIsKeptAndToldOnce)
{
    struct row_t
    {
        const char* door;
        std::function<void(wxTextCtrl*, const wxString&)> insert;
        const char* single;
        const char* several;
    };
    const row_t rows[] = {
        {"SetValue", [](auto* ctrl, auto& text) { ctrl->SetValue(text); }, "0123456789", "0123456789"},
        {"WriteText", [](auto* ctrl, auto& text) { ctrl->WriteText(text); }, "ab01234567", "ab01234567"},
        {"AppendText", [](auto* ctrl, auto& text) { ctrl->AppendText(text); }, "ab01234567", "ab01234567"},
        {"Paste", [](auto* ctrl, auto&) { ctrl->Paste(); }, "ab01234567", "ab01234567"},
        {"keys", [](auto*, auto&) { test::press('V', wxMOD_CONTROL); }, "ab01234567", "ab01234567"},
        {"middle click", [](auto* ctrl, auto& text) { middle_click_behind_text(ctrl, text); }, "ab01234567",
         "ab01234567"},
        // In front of what is there, the field of several lines keeps the first characters of all.
        {"in front",
         [](auto* ctrl, auto& text) {
             ctrl->SetInsertionPoint(0);
             ctrl->WriteText(text);
         },
         "01234567ab", "0123456789"},
    };
    const wxString pasted = wxString::FromUTF8("0123456789XYZ日本語\n");
    for (const row_t& row : rows) {
        for (const bool several : {false, true}) {
            SCOPED_TRACE(std::string(row.door) + (several ? ", several lines" : ", single line"));
            probe_dialog_t dialog("dlg.example");
            dialog.register_limits = [&] {
                dialog.set_max_len_options(fields_t(&dialog).name, {"Name", 10});
                dialog.set_max_len_options(fields_t(&dialog).notes, {"Notes", 10});
            };
            put_on_clipboard(pasted, false);
            wxString kept;
            const auto messages = messages_of(dialog, [&](fields_t fields) {
                wxTextCtrl* ctrl = several ? fields.notes : fields.name;
                ctrl->ChangeValue("ab");
                ctrl->SetFocus();
                ctrl->SetInsertionPointEnd();
                test::settle();
                row.insert(ctrl, pasted);
                kept = ctrl->GetValue();
            });
            EXPECT_EQ(several ? row.several : row.single, kept);
            EXPECT_EQ(2u, messages.size()) << "one message for the change";
        }
    }
}

// A details key of the window's own replaces the body; one that gives an empty text falls back to the shared
// body.
TEST(Limits, DetailsKeyIsTheBodyOfTheMessage)
{
    probe_dialog_t dialog("dlg.example");
    dialog.register_limits = [&] {
        dialog.set_max_len_options(fields_t(&dialog).notes, {"Notes", 3, "path.invalid_file"});
    };
    const auto messages = messages_of(dialog, [&](fields_t fields) {
        fields.notes->SetValue(wxString::FromUTF8("日本語テキスト"));
        EXPECT_EQ(wxString::FromUTF8("日本語"), fields.notes->GetValue()) << "characters, not bytes";
    });
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
