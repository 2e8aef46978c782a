#pragma once

#include "cpil/export.h"
#include "cpil/varg_list.h"

#include <functional>
#include <map>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace CPIL_2_18 {
namespace i18n {

class message_pattern_t;

/// Marks a catalog key that stands in a table or is passed on, so that the check of all keys during the build
/// finds it. Returns its argument.
constexpr const char* catalog_key(const char* key)
{
    return key;
}

/// One message of a catalog, ready to be filled with arguments. Cheap to copy; outlives its catalog.
class CPIL_EXPORT message_t
{
public:
    /// The message of a key that is not in the catalog: its text is empty.
    message_t() = default;
    explicit message_t(std::shared_ptr<const message_pattern_t> pattern) : m_pattern(std::move(pattern)) {}

    bool empty() const noexcept { return !m_pattern; }

    /// The text with the arguments put in, UTF-8. An argument whose letters run against the language's
    /// direction, as a path does in Arabic, stands in isolating marks, so that it leaves the order of the
    /// words around it alone. A missing argument shows as `{name}`; a pattern that is broken, or that cannot
    /// take an argument of that type, shows as it stands in the catalog. Never throws for either.
    std::string as_ustring(const generic::varg_list& args = generic::varg_list()) const;

    /// The pattern as it stands in the catalog.
    const std::string& raw() const noexcept;

private:
    std::shared_ptr<const message_pattern_t> m_pattern;
};

/// The messages of one product part in one language.
///
/// Patterns are those of ICU's MessageFormat with named arguments: `{name}`, `{count, plural, one {...} other
/// {...}}` and so on; an apostrophe before a brace quotes it and two apostrophes make one. Plural forms and
/// numbers follow the language of the catalog in which the text was found.
///
/// \code
/// std::string text = catalog->message("%InvalidLength").as_ustring({{"field_name", "Port"}, {"max_len",
/// 5}}); \endcode
///
/// Ownership: by shared pointer. Thread: reading is safe in any thread. Parsed patterns are kept.
class CPIL_EXPORT catalog_t
{
public:
    virtual ~catalog_t();
    catalog_t(const catalog_t&) = delete;
    catalog_t& operator=(const catalog_t&) = delete;

    const std::string& name() const noexcept { return m_name; }
    /// "en", "de", "pt_BR".
    const std::string& language() const noexcept { return m_language; }

    /// In this catalog or in the one it falls back to.
    bool has_message(std::string_view key) const;
    /// Empty when the catalog has none of that key.
    message_t message(std::string_view key) const;

    /// Where to look for keys that this catalog lacks. To be set before the catalog is shared.
    void set_fallback(std::shared_ptr<const catalog_t> fallback) { m_fallback = std::move(fallback); }

protected:
    catalog_t(std::string name, std::string language);

    /// The pattern of a key; null if there is none. Called from any thread.
    virtual const char* find_text(const char* key) const = 0;

private:
    struct key_hash_t
    {
        std::size_t operator()(std::string_view key) const noexcept
        {
            return std::hash<std::string_view>()(key);
        }
    };
    struct entry_t
    {
        std::string key;
        std::shared_ptr<const message_pattern_t> pattern;
    };

    std::shared_ptr<const message_pattern_t> find_pattern(std::string_view key) const;

    std::string m_name;
    std::string m_language;
    std::shared_ptr<const catalog_t> m_fallback;
    mutable std::shared_mutex m_mutex;
    // The view points into the entry's own key.
    mutable std::unordered_map<std::string_view, std::unique_ptr<entry_t>, key_hash_t> m_patterns;
};

/// A catalog made from texts in memory: for tests and for hosts that bring their own.
CPIL_EXPORT std::shared_ptr<catalog_t> make_catalog(const std::string& name, const std::string& language,
                                                    std::map<std::string, std::string> messages);

/// Whether the script of a language runs from right to left. False for a language nobody knows.
CPIL_EXPORT bool is_right_to_left(const std::string& language);

} // namespace i18n
} // namespace CPIL_2_18

namespace cpil2 = CPIL_2_18;
