#include "settings_store.h"

#include <cfgmgr2/product_locations.h>

namespace gallery {

gen_helpers2::error_code_t settings_store_t::load()
{
    gen_helpers2::error_code_t result;
    if (!m_storage)
        m_storage = cfgmgr2::open_property_storage(
            cfgmgr2::IProductLocations::get()->get_config_directory() / m_file, result);
    return result;
}

} // namespace gallery
