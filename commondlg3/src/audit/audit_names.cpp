#include "audited_window.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/inspect.h>
#include <wx_helpers1/text.h>

#include <wx/anybutton.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>

#include <map>
#include <string>
#include <typeindex>
#include <utility>

namespace commondlg3 {
namespace {

bool shows_its_name(const wxWindow& window)
{
    // The toolkit's own class information does not tell wxAnyButton from any other control.
    return dynamic_cast<const wxAnyButton*>(&window) || dynamic_cast<const wxCheckBox*>(&window) ||
           dynamic_cast<const wxRadioButton*>(&window);
}

} // namespace

void audit_names(audited_window_t& audited)
{
    std::map<std::pair<std::type_index, std::string>, const wxWindow*> named;
    for (wxWindow* window : audited.get_shown()) {
        if (!window->AcceptsFocusFromKeyboard() || !window->GetChildren().empty())
            continue;
        const std::string name = wx_helpers1::get_spoken_name(window);
        if (name.empty()) {
            audited.add("no_name", *window, "");
            continue;
        }
        const auto [other, is_new] =
            named.emplace(std::make_pair(std::type_index(typeid(*window)), name), window);
        if (!is_new)
            audited.add("same_name", *window,
                        "\"" + name + "\" as " + audited_window_t::get_path(*other->second));
        if (!shows_its_name(*window))
            continue;
        for (const wx_helpers1::shown_text_t& shown : wx_helpers1::get_shown_texts(*window))
            if (has_letters(shown.text) && name.find(shown.text) == std::string::npos)
                audited.add("other_name", *window, "\"" + name + "\" for \"" + shown.text + "\"");
    }
}

} // namespace commondlg3
