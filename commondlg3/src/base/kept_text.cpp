#include "kept_text.h"

#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>

#include <map>

namespace commondlg3 {

const std::string& kept_text(const char* key)
{
    static std::map<std::string, std::string> kept;
    std::string& text = kept[cfgmgr2::get_language() + '\n' + key];
    if (text.empty())
        text = translate_message(key, {});
    return text;
}

} // namespace commondlg3
