#include "cpil/mo_catalog.h"

#include "gen_helpers2/file.h"

#include <boost/locale/gnu_gettext.hpp>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <locale>
#include <vector>

namespace CPIL_2_18 {
namespace i18n {

namespace {

namespace gettext = boost::locale::gnu_gettext;
using facet_t = boost::locale::message_format<char>;

constexpr std::size_t header_bytes = 28;
constexpr std::size_t max_mo_bytes = std::size_t(64) << 20;
/// Longer than the rule of any language. The parser of that rule calls itself, so its length must have a
/// bound.
constexpr std::size_t max_plural_rule = 512;

/// The structure of a file, checked before anybody relies on it.
class mo_file_t
{
public:
    explicit mo_file_t(const std::string& bytes) : m_bytes(bytes) {}

    bool is_sound()
    {
        if (m_bytes.size() < header_bytes)
            return false;
        m_swapped = false;
        if (number(0) != magic) {
            m_swapped = true;
            if (number(0) != magic)
                return false;
        }
        const std::uint64_t count = number(8);
        if (number(4) >> 16 != 0 || count == 0)
            return false;
        for (const std::size_t table : {number(12), number(16)}) {
            if (table % 4 != 0 || table + count * 8 > m_bytes.size())
                return false;
            for (std::uint64_t i = 0; i < count; ++i)
                if (!is_sound_text(table + i * 8))
                    return false;
        }
        return has_sound_header(count);
    }

private:
    static constexpr std::uint32_t magic = 0x950412de;

    std::uint32_t number(std::size_t at) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const std::size_t shift = m_swapped ? 3 - i : i;
            value |= std::uint32_t(static_cast<unsigned char>(m_bytes[at + i])) << (8 * shift);
        }
        return value;
    }

    bool is_sound_text(std::size_t entry) const
    {
        const std::uint64_t length = number(entry), offset = number(entry + 4);
        return offset + length < m_bytes.size() && m_bytes[offset + length] == '\0';
    }

    std::string text(std::size_t entry) const { return m_bytes.substr(number(entry + 4), number(entry)); }

    /// The translation of the empty text describes the file: its encoding and its rule for plurals.
    bool has_sound_header(std::uint64_t count) const
    {
        for (std::uint64_t i = 0; i < count; ++i) {
            if (!text(number(12) + i * 8).empty())
                continue;
            const std::string header = text(number(16) + i * 8);
            const std::size_t rule = header.find("plural=");
            return rule == std::string::npos ||
                   std::min(header.find('\n', rule), header.size()) - rule <= max_plural_rule;
        }
        // Without it the encoding is unknown.
        return false;
    }

    const std::string& m_bytes;
    bool m_swapped = false;
};

class mo_catalog_t : public catalog_t
{
public:
    mo_catalog_t(const std::string& name, const std::string& language, facet_t* facet)
        : catalog_t(name, language), m_owner(std::locale::classic(), facet), m_facet(*facet)
    {
    }

private:
    const char* find_text(const char* key) const override { return m_facet.get(0, nullptr, key); }

    /// Only a locale can destroy a facet.
    std::locale m_owner;
    const facet_t& m_facet;
};

} // namespace

std::shared_ptr<catalog_t> read_mo_catalog(const std::string& bytes, const std::string& domain,
                                           const std::string& language)
{
    if (!mo_file_t(bytes).is_sound())
        return nullptr;
    try {
        // The facet looks for files by a locale's rules; whichever it asks for first is ours.
        gettext::messages_info info;
        info.language = "any";
        info.encoding = "UTF-8";
        info.domains.emplace_back("catalog");
        info.paths.emplace_back("memory");
        info.callback = [&bytes, given = false](const std::string&, const std::string&) mutable {
            std::vector<char> content;
            if (!given) {
                content.assign(bytes.begin(), bytes.end());
                // Without the file's own hash table the facet makes one of its own and trusts nothing
                // further.
                std::fill(content.begin() + 20, content.begin() + 24, '\0');
            }
            given = true;
            return content;
        };
        facet_t* const facet = gettext::create_messages_facet<char>(info);
        return facet ? std::make_shared<mo_catalog_t>(domain, language, facet) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

std::shared_ptr<catalog_t> load_mo_catalog(const std::string& mo_path, const std::string& domain,
                                           const std::string& language)
{
    std::string bytes;
    if (gen_helpers2::read_whole_file(gen_helpers2::path_t(mo_path), bytes, max_mo_bytes).failed())
        return nullptr;
    return read_mo_catalog(bytes, domain, language);
}

} // namespace i18n
} // namespace CPIL_2_18
