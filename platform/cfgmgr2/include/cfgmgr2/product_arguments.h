#pragma once

#include "cfgmgr2/product_locations.h"

#include <cpil/varg_list.h>

namespace cfgmgr2 {

/// The arguments that every catalog text may use without its caller's help: "prod_name" and
/// "prod_short_name". Any thread.
inline CPIL_2_18::generic::varg_list product_arguments()
{
    const IProductLocations* locations = IProductLocations::get();
    return {{"prod_name", locations->get_product_name()},
            {"prod_short_name", locations->get_product_short_name()}};
}

} // namespace cfgmgr2
