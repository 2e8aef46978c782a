#include "settings_store.h"

#include <cfgmgr2/product_locations.h>

namespace gallery {

gen_helpers2::error_code_t settings_store_t::load()
{
    using gen_helpers2::error_code_t;
    error_code_t result;
    if (m_storage)
        return result;
    const auto file = cfgmgr2::IProductLocations::get()->get_config_directory() / m_file;
    m_storage = cfgmgr2::open_property_storage(file, result);
    if (result == error_code_t::damaged("")) // which says where in the file, but not in which
        result = error_code_t::damaged(m_file + ": " + result.message());
    return result;
}

} // namespace gallery
