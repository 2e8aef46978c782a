#include "message_of.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_arguments.h>
#include <cpil/catalog.h>

namespace commondlg3 {

std::string message_of(const std::string& catalog_name, const std::string& key,
                       const CPIL_2_18::generic::varg_list& args)
{
    const auto catalog = cfgmgr2::getMessageCatalog(catalog_name);
    if (!catalog)
        return "Message catalog '" + catalog_name + "' is not loaded. Message: " + key;
    if (!catalog->has_message(key))
        return "Message is not found: '" + key + "'";
    return catalog->message(key).as_ustring(args.empty() ? cfgmgr2::product_arguments() : args);
}

} // namespace commondlg3
