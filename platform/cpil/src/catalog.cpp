#include "cpil/catalog.h"
#include "message_pattern.h"

#include <unicode/uloc.h>

#include <mutex>

namespace CPIL_2_18 {
namespace i18n {

std::string message_t::as_ustring(const generic::varg_list& args) const
{
    return m_pattern ? m_pattern->format(args) : std::string();
}

const std::string& message_t::raw() const noexcept
{
    static const std::string nothing;
    return m_pattern ? m_pattern->raw() : nothing;
}

catalog_t::catalog_t(std::string name, std::string language)
    : m_name(std::move(name)), m_language(std::move(language))
{
}

catalog_t::~catalog_t() = default;

std::shared_ptr<const message_pattern_t> catalog_t::find_pattern(std::string_view key) const
{
    {
        const std::shared_lock<std::shared_mutex> lock(m_mutex);
        const auto found = m_patterns.find(key);
        if (found != m_patterns.end())
            return found->second->pattern;
    }
    // The empty key leads to the file's own description.
    if (key.empty() || key.find('\0') != std::string_view::npos)
        return nullptr;
    auto entry = std::make_unique<entry_t>();
    entry->key = std::string(key);
    const char* text = find_text(entry->key.c_str());
    // Only keys that exist are remembered: the others could be any number.
    if (!text || !*text)
        return nullptr;
    entry->pattern = std::make_shared<const message_pattern_t>(text, m_language);
    const std::unique_lock<std::shared_mutex> lock(m_mutex);
    const std::string_view kept_key(entry->key);
    return m_patterns.try_emplace(kept_key, std::move(entry)).first->second->pattern;
}

bool catalog_t::has_message(std::string_view key) const
{
    return find_pattern(key) != nullptr || (m_fallback && m_fallback->has_message(key));
}

message_t catalog_t::message(std::string_view key) const
{
    if (auto pattern = find_pattern(key))
        return message_t(std::move(pattern));
    return m_fallback ? m_fallback->message(key) : message_t();
}

namespace {

class memory_catalog_t : public catalog_t
{
public:
    memory_catalog_t(const std::string& name, const std::string& language,
                     std::map<std::string, std::string> messages)
        : catalog_t(name, language), m_messages(std::move(messages))
    {
    }

private:
    const char* find_text(const char* key) const override
    {
        const auto found = m_messages.find(key);
        return found == m_messages.end() ? nullptr : found->second.c_str();
    }

    std::map<std::string, std::string> m_messages;
};

} // namespace

std::shared_ptr<catalog_t> make_catalog(const std::string& name, const std::string& language,
                                        std::map<std::string, std::string> messages)
{
    return std::make_shared<memory_catalog_t>(name, language, std::move(messages));
}

bool is_right_to_left(const std::string& language)
{
    return uloc_isRightToLeft(language.c_str()) != 0;
}

} // namespace i18n
} // namespace CPIL_2_18
