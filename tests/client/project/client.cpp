#include "interface.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/resources.h>
#include <commondlg3/text_utils.h>

#include <cstdio>
#include <memory>

volatile const void* last_named;

int main(int count, char**)
{
    if (count > 1) { // never: to be linked is enough
        name_messages();
#ifndef MESSAGES_ALONE
        name_log();
        name_pages();
#endif
    }
    auto product = std::make_shared<cfgmgr2::product_locations_t>();
    product->resource_directory = gen_helpers2::path_t(DATA_DIR);
    product->locale_directory = gen_helpers2::path_t(LOCALE_DIR);
    cfgmgr2::IProductLocations::set(product);
    std::printf("%s\n%s\n", commondlg3::translate_message("btn.ok").c_str(),
                commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc").c_str());
}
