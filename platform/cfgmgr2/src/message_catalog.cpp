#include "cfgmgr2/message_catalog.h"
#include "cfgmgr2/product_locations.h"
#include "cpil/mo_catalog.h"
#include "gen_helpers2/assertion.h"
#include "gen_helpers2/environment.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <system_error>

namespace cfgmgr2 {

namespace {

using CPIL_2_18::i18n::catalog_t;
using clock_t = std::chrono::steady_clock;
constexpr std::chrono::seconds time_to_look_again(1);
constexpr char english[] = "en";

struct entry_t
{
    std::shared_ptr<const catalog_t> catalog;
    /// Another language stands in for the one asked for.
    bool stands_in = false;
    clock_t::time_point looked_at;

    bool is_good() const
    {
        return catalog && (!stands_in || clock_t::now() - looked_at < time_to_look_again);
    }
};

using entries_t = std::map<std::string, entry_t, std::less<>>;

struct catalogs_t
{
    std::shared_mutex mutex;
    std::string language = english;
    std::map<std::string, entries_t> by_language;
    /// The entries of the language set; those of the others stay for when it is set again.
    entries_t* current = &by_language[english];
};

catalogs_t& catalogs()
{
    static catalogs_t* const all = new catalogs_t;
    return *all;
}

/// "pt_BR", "pt", "en", and then none.
std::string next_language(const std::string& language)
{
    const std::size_t end = language.rfind('_');
    if (end != std::string::npos)
        return language.substr(0, end);
    return language == english ? std::string() : std::string(english);
}

gen_helpers2::path_t catalog_file(std::string_view name, const std::string& language)
{
    return IProductLocations::get()->get_locale_directory() / language / "LC_MESSAGES" /
           (std::string(name) + ".mo");
}

bool can_be_a_name(std::string_view name)
{
    return !name.empty() && name.find('/') == std::string_view::npos;
}

/// Called with the mutex held.
std::shared_ptr<const catalog_t> look_up(catalogs_t& all, std::string_view name, const std::string& language)
{
    if (language.empty())
        return nullptr;
    entries_t& entries = all.by_language[language];
    auto found = entries.find(name);
    if (found == entries.end())
        found = entries.emplace(std::string(name), entry_t()).first;
    entry_t& entry = found->second;
    if (entry.is_good())
        return entry.catalog;

    const auto own = CPIL_2_18::i18n::load_mo_catalog(catalog_file(name, language).as_string(),
                                                      std::string(name), language);
    const auto next = look_up(all, name, next_language(language));
    if (own)
        own->set_fallback(next);
    entry.stands_in = !own;
    entry.catalog = own ? own : next;
    entry.looked_at = clock_t::now();
    return entry.catalog;
}

bool is_lower(char c)
{
    return c >= 'a' && c <= 'z';
}
bool is_alphanumeric(char c)
{
    return is_lower(c) || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Empty if it is none. The result becomes the name of a folder, hence nothing but letters, digits and '_'.
std::string normalised_language(std::string language)
{
    language.erase(std::min(language.find_first_of(".@"), language.size()));
    std::size_t part_length = 0, parts = 0;
    for (char& c : language) {
        if (c == '-')
            c = '_';
        if (c == '_') {
            if (part_length < 2)
                return std::string();
            part_length = 0;
            ++parts;
        } else if (!(parts == 0 ? is_lower(c) : is_alphanumeric(c)) ||
                   ++part_length > (parts == 0 ? 3U : 8U)) {
            return std::string();
        }
    }
    return part_length < 2 ? std::string() : language;
}

} // namespace

std::shared_ptr<const catalog_t> getMessageCatalog(std::string_view name)
{
    if (!can_be_a_name(name))
        return nullptr;
    catalogs_t& all = catalogs();
    {
        const std::shared_lock<std::shared_mutex> lock(all.mutex);
        const auto found = all.current->find(name);
        if (found != all.current->end() && found->second.is_good())
            return found->second.catalog;
    }
    const std::unique_lock<std::shared_mutex> lock(all.mutex);
    return look_up(all, name, all.language);
}

std::shared_ptr<const catalog_t> getMessageCatalog(std::string_view name, const std::string& language)
{
    if (!can_be_a_name(name))
        return nullptr;
    catalogs_t& all = catalogs();
    const std::unique_lock<std::shared_mutex> lock(all.mutex);
    return look_up(all, name, normalised_language(language));
}

std::vector<std::string> get_catalog_languages(const std::string& name)
{
    std::vector<std::string> languages;
    std::error_code ignored;
    const gen_helpers2::path_t folder = IProductLocations::get()->get_locale_directory();
    for (std::filesystem::directory_iterator at(folder.as_filesystem_path(), ignored), end; at != end;
         at.increment(ignored)) {
        const std::string language = at->path().filename().string();
        if (can_be_a_name(name) && normalised_language(language) == language &&
            catalog_file(name, language).is_file())
            languages.push_back(language);
    }
    std::sort(languages.begin(), languages.end());
    return languages;
}

void set_language(const std::string& language)
{
    const std::string normalised = normalised_language(language);
    if (!GH2_ASSERT_TEXT(!normalised.empty(), "not the name of a language", "message_catalog"))
        return;
    catalogs_t& all = catalogs();
    const std::unique_lock<std::shared_mutex> lock(all.mutex);
    all.language = normalised;
    all.current = &all.by_language[normalised];
}

std::string get_language()
{
    catalogs_t& all = catalogs();
    const std::shared_lock<std::shared_mutex> lock(all.mutex);
    return all.language;
}

std::string language_from_environment()
{
    for (const char* variable : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        std::string value = gen_helpers2::get_environ_value(variable);
        // The first is a list in order of preference.
        value.erase(std::min(value.find(':'), value.size()));
        std::string language = normalised_language(value);
        if (!language.empty())
            return language;
    }
    return english;
}

void reset_message_catalogs()
{
    catalogs_t& all = catalogs();
    const std::unique_lock<std::shared_mutex> lock(all.mutex);
    all.by_language.clear();
    all.current = &all.by_language[all.language];
}

bool language_is_right_to_left(const std::string& language)
{
    const std::string normalised = normalised_language(language);
    return !normalised.empty() && CPIL_2_18::i18n::is_right_to_left(normalised);
}

} // namespace cfgmgr2
