#include "commondlg3/product_app.h"

#include "commondlg3/inplace_contents.h"

#include <cfgmgr2/message_catalog.h>
#include <wx_helpers1/layout_direction.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/ui_settings.h>

namespace commondlg3 {

product_app_t::product_app_t(const std::string& name, const std::string& short_name)
    : m_product(std::make_shared<cfgmgr2::product_locations_t>())
{
    m_product->product_name = name;
    m_product->product_short_name = short_name.empty() ? name : short_name;
}

product_app_t::~product_app_t() = default;

bool product_app_t::OnInit()
{
    cfgmgr2::IProductLocations::set(m_product);
    cfgmgr2::set_language(cfgmgr2::language_from_environment());
    wx_helpers1::set_right_to_left(cfgmgr2::language_is_right_to_left(cfgmgr2::get_language()));
    wx_helpers1::tasks::Scheduler::Initialize();
    wx_helpers1::ui_settings_t::initialize();
    return true;
}

int product_app_t::OnExit()
{
    inplace_contents_t::wait_until_saved();
    wx_helpers1::tasks::Scheduler::Shutdown();
    wx_helpers1::ui_settings_t::shutdown();
    return wxApp::OnExit();
}

wxLayoutDirection product_app_t::GetLayoutDirection() const
{
    return cfgmgr2::language_is_right_to_left(cfgmgr2::get_language()) ? wxLayout_RightToLeft
                                                                       : wxLayout_LeftToRight;
}

void product_app_t::OnAssertFailure(const wxChar* file, int line, const wxChar*, const wxChar* condition,
                                    const wxChar* message)
{
    const wxString where =
        wxString::Format("%s:%d: %s %s", file, line, condition, message ? message : wxT(""));
    gen_helpers2::log_error("toolkit", where.utf8_string());
}

} // namespace commondlg3
