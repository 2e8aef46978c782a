#pragma once

#include <cfgmgr2/property_storage.h>
#include <gen_helpers2/error_code.h>

#include <memory>
#include <string>

namespace gallery {

/// A settings file of this product, for all pages that keep theirs in it: it is read once, what is wrong with
/// it is told once, and what one page writes the others have as well.
class settings_store_t
{
public:
    /// @param file its name in the configuration directory
    explicit settings_store_t(std::string file) : m_file(std::move(file)) {}

    /// Reads the file at the first call. The others succeed: its error has been told already.
    [[nodiscard]] gen_helpers2::error_code_t load();
    /// Null before load().
    const gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>& get() const { return m_storage; }

private:
    std::string m_file;
    gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> m_storage;
};
using settings_store_ptr_t = std::shared_ptr<settings_store_t>;

/// Preferences that have no file of their own.
constexpr char preferences_file[] = "preferences.xml";

} // namespace gallery
