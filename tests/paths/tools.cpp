#include "tools.h"

#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/environment.h>
#include <wx_helpers1/text.h>

#include <wx/stattext.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace test {

int messages_t::Enter(wxDialog* dialog)
{
    if (!dynamic_cast<commondlg3::error_warning_dialog_t*>(dialog))
        return wxID_NONE;
    dialog->InitDialog(); // it takes its texts when it is about to appear
    auto* main = wxDynamicCast(dialog->FindWindow(XRCID("m_main_instructions")), wxStaticText);
    auto* more = wxDynamicCast(dialog->FindWindow(XRCID("m_supplemental_instructions")), wxStaticText);
    if (!main || !more)
        return wxID_NONE;
    shown.emplace_back(wx_helpers1::from_wx(main->GetLabelText()),
                       wx_helpers1::from_wx(more->GetLabelText()));
    return wxID_CANCEL;
}

variable_guard_t::variable_guard_t(const char* name, const char* value) : m_name(name)
{
    m_was_set = gen_helpers2::get_environ_value(m_name, m_value);
    value ? setenv(name, value, 1) : unsetenv(name);
}

variable_guard_t::~variable_guard_t()
{
    m_was_set ? setenv(m_name.c_str(), m_value.c_str(), 1) : unsetenv(m_name.c_str());
}

ordinary_user_t::ordinary_user_t()
{
    constexpr uid_t nobody = 65534;
    if (getuid() == 0) {
        EXPECT_EQ(0, seteuid(nobody));
    }
}

ordinary_user_t::~ordinary_user_t()
{
    EXPECT_EQ(0, seteuid(getuid()));
}

void make_file(const std::string& path, const std::string& text)
{
    std::ofstream(path) << text;
}

std::string read_file(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace test
