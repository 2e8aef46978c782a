#include "commondlg3/resources.h"

#include <cfgmgr2/product_locations.h>

namespace commondlg3 {

std::string create_resource_filename(const std::string& archive, const std::string& member)
{
    return cfgmgr2::IProductLocations::get()->get_resource_directory().as_string() + "/" + archive +
           "#zip:" + member;
}

} // namespace commondlg3
