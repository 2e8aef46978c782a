#pragma once

#include "cpil/catalog.h"
#include "cpil/export.h"

#include <memory>
#include <string>

namespace CPIL_2_18 {
namespace i18n {

/// Reads a compiled message file (".mo", UTF-8, of either byte order), independently of the process's locale.
/// Null if the file is missing or damaged; no content whatever can do harm. An empty translation counts as
/// none.
CPIL_EXPORT std::shared_ptr<catalog_t> load_mo_catalog(const std::string& mo_path, const std::string& domain,
                                                       const std::string& language);

/// The same from the bytes of such a file.
CPIL_EXPORT std::shared_ptr<catalog_t> read_mo_catalog(const std::string& bytes, const std::string& domain,
                                                       const std::string& language);

} // namespace i18n
} // namespace CPIL_2_18

namespace cpil2 = CPIL_2_18;
