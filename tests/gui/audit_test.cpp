#include "support.h"

#include <commondlg3/audit.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <gtk/gtk.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

/// A window that is as it should be, until a fault is put in.
struct sample_t
{
    sample_t() : frame(new wxFrame(test::main_window(), wxID_ANY, "Sample"))
    {
        panel = new wxPanel(frame);
        label = new wxStaticText(panel, wxID_ANY, "&Name:");
        label->SetName("label");
        field = new wxTextCtrl(panel, wxID_ANY);
        field->SetName("field");
        box = new wxCheckBox(panel, wxID_ANY, "&Remember");
        box->SetName("box");
        button = new wxButton(panel, wxID_ANY, "&Close");
        button->SetName("button");
        wx_helpers1::set_label_for(label, field);
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        for (wxWindow* control : std::initializer_list<wxWindow*>{label, field, box, button})
            sizer->Add(control, 0, wxALL, 8);
        panel->SetSizer(sizer);
        fit();
    }
    ~sample_t() { frame->Destroy(); }

    void fit()
    {
        frame->SetClientSize(panel->GetBestSize());
        panel->SetSize(panel->GetBestSize());
    }

    std::vector<commondlg3::audit_finding_t> audit()
    {
        frame->Show();
        EXPECT_TRUE(test::wait_for([this] { return frame->IsActive(); }));
        field->SetFocus();
        test::settle();
        return commondlg3::audit_window(button);
    }

    wxFrame* frame;
    wxPanel* panel;
    wxStaticText* label;
    wxTextCtrl* field;
    wxCheckBox* box;
    wxButton* button;
};

TEST(Audit, EachFaultIsFoundAndNothingElse)
{
    struct row_t
    {
        const char* kind;
        const char* control;
        std::function<void(sample_t&)> fault;
    };
    const auto trap = [](sample_t& s) {
        s.box->Bind(wxEVT_KEY_DOWN, [](wxKeyEvent& event) { event.Skip(event.GetKeyCode() != WXK_TAB); });
    };
    const row_t rows[] = {
        {"", "", [](sample_t&) {}},
        {"", "",
         [](sample_t& s) { // the strokes of small letters are paler than their colour
             const auto* settings = wx_helpers1::ui_settings_t::get();
             s.label->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
             s.label->SetFont(s.label->GetFont().Scaled(0.6F));
             s.label->SetLabel("The window opens as large as it was when it was closed");
             s.fit();
         }},
        {"no_size", "label", [](sample_t& s) { s.panel->SetSizer(nullptr), s.label->SetSize(1, 1); }},
        {"outside", "button",
         [](sample_t& s) {
             s.panel->SetSizer(nullptr), s.button->Move(s.button->GetPosition() + wxPoint(0, 20));
         }},
        {"overlapping", "button",
         [](sample_t& s) {
             s.panel->SetSizer(nullptr), s.button->Move(s.box->GetPosition() + wxPoint(0, 9));
         }},
        {"text_cut", "label",
         [](sample_t& s) { s.panel->SetSizer(nullptr), s.label->SetSize(20, s.label->GetSize().y); }},
        {"tab_misses", "box",
         [](sample_t& s) { gtk_widget_set_can_focus(GTK_WIDGET(s.box->GetHandle()), FALSE); }},
        {"tab_trapped", "box", trap},
        {"no_name", "field",
         [](sample_t& s) { s.label->Destroy(), wx_helpers1::set_accessible_name(s.field, ""); }},
        {"same_name", "button",
         [](sample_t& s) {
             s.panel->GetSizer()->Add(new wxButton(s.panel, wxID_ANY, "Close"));
             s.fit();
         }},
        {"other_name", "button", [](sample_t& s) { wx_helpers1::set_accessible_name(s.button, "Go"); }},
        {"same_mnemonic", "button",
         [](sample_t& s) { s.button->SetLabel("C&lear"), s.box->SetLabel("&Later"); }},
        {"low_contrast", "label", [](sample_t& s) { s.label->SetForegroundColour(wxColour(150, 150, 150)); }},
        {"raw_key", "button", [](sample_t& s) { s.button->SetLabel("btn.close"); }},
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.kind);
        sample_t sample;
        row.fault(sample);
        sample.panel->Layout();
        std::string found;
        for (const auto& finding : sample.audit())
            found += finding.kind + " " + finding.control.substr(finding.control.rfind('/') + 1) + " " +
                     finding.detail + "\n";
        const std::string expected = std::string(row.kind) + " " + row.control;
        if (*row.kind)
            EXPECT_NE(std::string::npos, found.find(expected)) << found;
        else
            EXPECT_EQ("", found);
        EXPECT_EQ(sample.field, wxWindow::FindFocus()) << "the focus comes back";
    }
}

} // namespace
