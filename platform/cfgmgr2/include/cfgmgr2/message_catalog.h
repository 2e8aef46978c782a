#pragma once

#include "cfgmgr2/export.h"
#include "cpil/catalog.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cfgmgr2 {

/// The catalog of that name (a file name without ".mo") in the language set, from the locale directory of the
/// product. A language without that catalog gets the one of its base language ("pt" for "pt_BR"), then the
/// English one; a key that a translation lacks is found in the English one.
///
/// Null if there is none at all. A catalog that was missing is looked for again: at the next call when
/// nothing was found, and at most once a second when English had to stand in. Thread: safe in any thread;
/// fast enough to be called for every text.
CFGMGR2_EXPORT std::shared_ptr<const CPIL_2_18::i18n::catalog_t> getMessageCatalog(std::string_view name);
/// The same in a language other than the one set.
CFGMGR2_EXPORT std::shared_ptr<const CPIL_2_18::i18n::catalog_t>
getMessageCatalog(std::string_view name, const std::string& language);

/// The languages that have a catalog of that name, in alphabetical order of their names ("de", "pt_BR"): what
/// a host can offer. The directory is read anew each time.
/// @since 3.1
CFGMGR2_EXPORT std::vector<std::string> get_catalog_languages(const std::string& name);

/// "de", "pt_BR"; an encoding and a modifier ("de_DE.UTF-8") are taken off. Anything else is an assertion and
/// changes nothing. Initially "en". Catalogs already handed out stay in their language.
CFGMGR2_EXPORT void set_language(const std::string& language);
/// The language set, as set_language() has kept it.
CFGMGR2_EXPORT std::string get_language();

/// The language that the user's environment asks for (LANGUAGE, LC_ALL, LC_MESSAGES, LANG); "en" if none.
CFGMGR2_EXPORT std::string language_from_environment();

/// Forgets all catalogs, so that files are read anew.
CFGMGR2_EXPORT void reset_message_catalogs();

/// By the code of the language, such as "ar"; false for one that is not known.
CFGMGR2_EXPORT bool language_is_right_to_left(const std::string& language);

} // namespace cfgmgr2
