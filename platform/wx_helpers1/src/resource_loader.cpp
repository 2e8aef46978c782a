#include "wx_helpers1/resource_loader.h"

#include "spare_layouts.h"

#include "wx_helpers1/accessibility.h"
#include "wx_helpers1/label.h"
#include "wx_helpers1/resource_file.h"
#include "wx_helpers1/scroll_area.h"
#include "wx_helpers1/static_picture_ctrl.h"
#include "wx_helpers1/text.h"
#include "wx_helpers1/text_limit.h"
#include "wx_helpers1/tooltip.h"
#include "wx_helpers1/ui_settings.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_arguments.h>

#include <cpil/catalog.h>
#include <gen_helpers2/log.h>

#include <wx/anybutton.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xml/xml.h>
#include <wx/xrc/xmlres.h>

#include <map>
#include <memory>
#include <set>

namespace wx_helpers1 {

namespace {

constexpr char logger[] = "wx_helpers1.resource_loader";

// The stock handler always creates the panel, and a panel that was created empty must not be created again.
class panel_handler_t : public wxXmlResourceHandler
{
public:
    panel_handler_t()
    {
        XRC_ADD_STYLE(wxTAB_TRAVERSAL);
        AddWindowStyles();
    }

    bool CanHandle(wxXmlNode* node) override { return IsOfClass(node, "wxPanel"); }

    wxObject* DoCreateResource() override
    {
        XRC_MAKE_INSTANCE(panel, wxPanel)
        if (!panel->GetHandle() && !panel->Create(m_parentAsWindow, GetID(), GetPosition(), GetSize(),
                                                  GetStyle("style", wxTAB_TRAVERSAL), GetName()))
            return nullptr;
        SetupWindow(panel);
        CreateChildren(panel);
        return panel;
    }
};

// The stock handler lets the toolkit choose a first size, for which it asks the window manager about the
// screen.
class dialog_handler_t : public wxXmlResourceHandler
{
public:
    dialog_handler_t()
    {
        XRC_ADD_STYLE(wxCAPTION);
        XRC_ADD_STYLE(wxDEFAULT_DIALOG_STYLE);
        XRC_ADD_STYLE(wxSYSTEM_MENU);
        XRC_ADD_STYLE(wxRESIZE_BORDER);
        XRC_ADD_STYLE(wxCLOSE_BOX);
        XRC_ADD_STYLE(wxMAXIMIZE_BOX);
        XRC_ADD_STYLE(wxMINIMIZE_BOX);
        XRC_ADD_STYLE(wxSTAY_ON_TOP);
        XRC_ADD_STYLE(wxDIALOG_NO_PARENT);
        XRC_ADD_STYLE(wxTAB_TRAVERSAL);
        AddWindowStyles();
    }

    bool CanHandle(wxXmlNode* node) override { return IsOfClass(node, "wxDialog"); }

    wxObject* DoCreateResource() override
    {
        XRC_MAKE_INSTANCE(dialog, wxDialog)
        if (!dialog->Create(m_parentAsWindow, GetID(), GetText("title"), GetPosition(), wxSize(400, 300),
                            GetStyle("style", wxDEFAULT_DIALOG_STYLE), GetName()))
            return nullptr;
        if (HasParam("size"))
            dialog->SetClientSize(GetSize("size", dialog));
        if (HasParam("icon"))
            dialog->SetIcons(GetIconBundle("icon", wxART_FRAME_ICON));
        SetupWindow(dialog);
        CreateChildren(dialog);
        if (GetBool("centered"))
            dialog->Centre();
        return dialog;
    }
};

class picture_handler_t : public wxXmlResourceHandler
{
public:
    bool CanHandle(wxXmlNode* node) override { return IsOfClass(node, "static_picture_ctrl_t"); }

    wxObject* DoCreateResource() override
    {
        XRC_MAKE_INSTANCE(control, static_picture_ctrl_t)
        control->Create(m_parentAsWindow, GetID());
        SetupWindow(control);
        return control;
    }
};

void translate(wxXmlNode* node, const cpil2::i18n::catalog_t& catalog,
               const cpil2::generic::varg_list& arguments)
{
    static const std::set<wxString> translated = {"label", "title", "tooltip", "hint", "help", "item"};
    for (; node; node = node->GetNext()) {
        if (node->GetType() != wxXML_ELEMENT_NODE)
            continue;
        if (node->GetAttribute("class") == "wxScrolledWindow")
            node->AddAttribute("subclass", "scroll_area_t");
        wxXmlNode* content = node->GetChildren();
        if (content && content->GetType() == wxXML_TEXT_NODE && translated.count(node->GetName())) {
            const std::string key = content->GetContent().utf8_string();
            if (catalog.has_message(key)) {
                wxString text = to_label(catalog.message(key).as_ustring(arguments));
                if (node->GetName() != "item") {
                    // The resource's own escapes would take a backslash or underscore of the text for
                    // theirs.
                    text.Replace("\\", "\\\\");
                    text.Replace("_", "__");
                }
                content->SetContent(text);
            }
        }
        translate(node->GetChildren(), catalog, arguments);
    }
}

std::string key_of(const std::string& file, const std::string& catalog)
{
    return file + '\n' + catalog + '\n' + cfgmgr2::get_language();
}

std::unique_ptr<wxXmlResource> parse(const std::string& file, const std::string& catalog_name)
{
    std::string xml;
    if (!read_resource(file, xml))
        return nullptr;
    wxMemoryInputStream stream(xml.data(), xml.size());
    auto document = std::make_unique<wxXmlDocument>();
    if (!document->Load(stream))
        return nullptr;
    if (const auto catalog = cfgmgr2::getMessageCatalog(catalog_name))
        translate(document->GetRoot(), *catalog, cfgmgr2::product_arguments());
    auto resource = std::make_unique<wxXmlResource>(wxXRC_NO_RELOADING);
    resource->InitAllHandlers();
    resource->InsertHandler(new dialog_handler_t);
    resource->InsertHandler(new panel_handler_t);
    resource->InsertHandler(new picture_handler_t);
    if (!resource->LoadDocument(document.release(), to_wx(file)))
        return nullptr;
    return resource;
}

wxXmlResource* get_resource(const std::string& file, const std::string& catalog)
{
    // Never destroyed: at the end of the process the toolkit is gone before our statics are.
    static auto& parsed = *new std::map<std::string, std::unique_ptr<wxXmlResource>>;
    const wxLogNull silent;
    auto& resource = parsed[key_of(file, catalog)];
    if (!resource)
        resource = parse(file, catalog);
    if (!resource)
        gen_helpers2::log_error(logger, "cannot read the resource " + file);
    return resource.get();
}

wxXmlResource* find_object(const std::string& file, const std::string& catalog, const std::string& object)
{
    wxXmlResource* resource = get_resource(file, catalog);
    if (!resource)
        return nullptr;
    const wxLogNull silent;
    if (resource->GetResourceNode(to_wx(object)))
        return resource;
    gen_helpers2::log_error(logger, "no object " + object + " in the resource " + file);
    return nullptr;
}

// Whether a control has no text of its own that says what it is for.
bool takes_label(wxWindow* window)
{
    const bool has_own = dynamic_cast<wxAnyButton*>(window) || dynamic_cast<wxCheckBox*>(window) ||
                         dynamic_cast<wxRadioButton*>(window);
    return dynamic_cast<wxControl*>(window) && !has_own && window->AcceptsFocus();
}

// What the toolkit's own building leaves out: a label that is seen names the field that follows it and
// stands at its script's edge, long tool tips are wrapped, and text fields have their height.
void finish(wxWindow* window)
{
    constexpr int characters_in_line = 60;
    wxStaticText* label = nullptr;
    for (wxWindow* child : window->GetChildren()) {
        if (label && label->IsShown() && takes_label(child)) {
            if (get_accessible_name(child).empty())
                set_label_for(label, child);
            else
                tie_label(label, child);
        }
        label = wxDynamicCast(child, wxStaticText);
        keep_label_relations(label);
        align_label_to_start(label);
        apply_native_height(child);
        hear_nothing_when_gone(wxDynamicCast(child, wxTextCtrl));
        if (child->GetToolTip())
            SetTooltip(child, from_wx(child->GetToolTipText()), characters_in_line * child->GetCharWidth());
        finish(child);
    }
}

// The toolkit has fitted the dialog to what its controls seemed to need.
void finish_dialog(wxWindow* dialog)
{
    finish(dialog);
    if (wxSizer* sizer = dialog->GetSizer()) {
        const wxSize least = sizer->CalcMin();
        wxSize size = dialog->GetClientSize();
        size.IncTo(least);
        dialog->SetMinClientSize(least);
        dialog->SetClientSize(size);
    }
}

} // namespace

resource_loader_t::resource_loader_t(const std::string& resource_file, const std::string& catalog_name)
    : m_file(resource_file), m_catalog(catalog_name)
{
}

bool resource_loader_t::load_dialog(wxDialog* dialog, wxWindow* parent, const std::string& object_name) const
{
    wxXmlResource* resource = find_object(m_file, m_catalog, object_name);
    if (!resource)
        return false;
    const std::string key = key_of(m_file, m_catalog) + '\n' + object_name;
    if (!spare_layouts::make_dialog(dialog, parent, key)) {
        if (!resource->LoadDialog(dialog, parent, to_wx(object_name)))
            return false;
        finish_dialog(dialog);
    }
    spare_layouts::build_later(key, resource, object_name, finish_dialog);
    return true;
}

bool resource_loader_t::load_panel(wxPanel* panel, wxWindow* parent, const std::string& object_name) const
{
    if (!parent)
        return false;
    wxXmlResource* resource = find_object(m_file, m_catalog, object_name);
    if (!resource)
        return false;
    const std::string key = key_of(m_file, m_catalog) + '\n' + object_name;
    if (!spare_layouts::make_panel(panel, parent, key)) {
        if (!resource->LoadPanel(panel, parent, to_wx(object_name)))
            return false;
        finish(panel);
    }
    // In a dialog that is about to open somebody waits for the panel, and will the next time.
    const auto* top = wxDynamicCast(wxGetTopLevelParent(parent), wxDialog);
    if (top && !top->IsShown())
        spare_layouts::build_later(key, resource, object_name, finish);
    return true;
}

resource_loader_t::state_t resource_loader_t::examine(const std::string& object_name) const
{
    if (!get_resource(m_file, m_catalog))
        return state_t::no_resource;
    return find_object(m_file, m_catalog, object_name) ? state_t::ok : state_t::no_object;
}

} // namespace wx_helpers1
