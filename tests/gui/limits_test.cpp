#include "probe.h"
#include "support.h"

#include <wx_helpers1/text.h>

#include <wx/clipbrd.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
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
    test::run(dialog, [&](wxTopLevelWindow*) {
        run_modal(
            [&] {
                change(fields_t(&dialog));
                test::settle(); // the message comes once the insertion has ended
                return 0;
            },
            [&](wxTopLevelWindow* message) {
                for (const char* label : {"m_main_instructions", "m_supplemental_instructions"}) {
                    wxString text = commondlg3::from_xrc<wxStaticText>(message, label)->GetLabel();
                    text.Replace("\n", " ");
                    messages.push_back(wx_helpers1::from_wx(text));
                }
                test::press(WXK_ESCAPE);
            });
        dialog.end_dialog(wxID_CANCEL);
    });
    return messages;
}

// A details key of the window's own replaces the shared body.
TEST(Limits, MessageNamesTheFieldTheProductAndTheLimitOrSaysWhatTheKeyHolds)
{
    const std::pair<const char*, const char*> bodies[] = {
        {"",
         "Vorbex Performance Studio accepts at most 3 characters in “Élan”. Everything beyond that was not "
         "kept. Check how the text ends now, and shorten it if something important is missing."},
        {"path.invalid_file",
         "This path does not lead to a file that can be used. It may be a folder, or you may not have "
         "permission to use the file. Choose another file."}};
    for (const auto& [key, body] : bodies) {
        probe_dialog_t dialog("dlg.example");
        dialog.register_limits = [&, details = key] {
            dialog.set_max_len_options(fields_t(&dialog).name, {"élan", 3, details});
        };
        const auto messages = messages_of(dialog, [](fields_t fields) {
            fields.name->ChangeValue(wxString::FromUTF8("日本語"));
            fields.name->SetFocus();
            fields.name->SetInsertionPointEnd();
            test::type("6");
            EXPECT_EQ(wxString::FromUTF8("日本語"), fields.name->GetValue()) << "characters, not bytes";
        });
        ASSERT_EQ(2u, messages.size()) << "one message for the change";
        EXPECT_EQ("Élan is too long", messages[0]);
        EXPECT_EQ(body, messages[1]);
    }
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
        const char* kept;
        const char* kept_of_several_lines = nullptr; // where it is another text
    };
    const row_t rows[] = {
        {"SetValue", [](auto* ctrl, auto& text) { ctrl->SetValue(text); }, "0123456789"},
        {"WriteText", [](auto* ctrl, auto& text) { ctrl->WriteText(text); }, "ab01234567"},
        {"AppendText", [](auto* ctrl, auto& text) { ctrl->AppendText(text); }, "ab01234567"},
        {"keys", [](auto*, auto&) { test::press('V', wxMOD_CONTROL); }, "ab01234567"},
        {"middle click", [](auto* ctrl, auto& text) { middle_click_behind_text(ctrl, text); }, "ab01234567"},
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
            EXPECT_EQ(several && row.kept_of_several_lines ? row.kept_of_several_lines : row.kept, kept);
            EXPECT_EQ(2u, messages.size()) << "one message for the change";
        }
    }
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
