#include "commondlg3/settings_file.h"

#include <cfgmgr2/product_locations.h>

#include <utility>

namespace commondlg3 {

using gen_helpers2::error_code_t;
using gen_helpers2::path_t;

settings_file_t::settings_file_t(const std::string& name)
    : m_path(!name.empty() && name.front() == '/'
                 ? path_t(name)
                 : cfgmgr2::IProductLocations::get()->get_config_directory() / name),
      m_storage(cfgmgr2::make_memory_property_storage())
{
}

settings_file_t::settings_file_t(gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> storage)
    : m_storage(storage ? std::move(storage) : cfgmgr2::make_memory_property_storage()), m_is_read(true)
{
}

error_code_t settings_file_t::load()
{
    error_code_t result;
    if (m_path.is_empty())
        return result;
    const gen_helpers2::file_stamp_t now(m_path);
    if (m_is_read && now == m_stamp)
        return result;
    m_stamp = now;
    m_is_read = true;
    m_storage = cfgmgr2::open_property_storage(m_path, result);
    if (result == error_code_t::damaged("")) // which says where in the file, but not in which
        result = error_code_t::damaged(m_path.file_name() + ": " + result.message());
    return result;
}

} // namespace commondlg3
