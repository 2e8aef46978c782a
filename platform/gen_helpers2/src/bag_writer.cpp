#include "bag_writer.h"
#include "bag_reader.h"
#include "gen_helpers2/strings.h"
#include "gen_helpers2/variant_bag_file.h"

#include <charconv>

namespace gen_helpers2 {
namespace _internal {

namespace {

bool is_markup(char c) noexcept
{
    return c == '&' || c == '<' || c == '>' || c == '"';
}

/// Text as it may stand in an element or between double quotes.
void append_text(std::string& out, std::string_view text)
{
    const std::string escaped = escape_bytes(text);
    std::string_view rest(escaped);
    while (!rest.empty()) {
        std::size_t plain = 0;
        while (plain < rest.size() && !is_markup(rest[plain]))
            ++plain;
        out.append(rest.data(), plain);
        if (plain == rest.size())
            return;
        switch (rest[plain]) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += "&quot;";
        }
        rest.remove_prefix(plain + 1);
    }
}

template <class T>
void append_number(std::string& out, T value)
{
    char digits[64];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

} // namespace

bag_writer_t::bag_writer_t() : m_out("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<bag version=\"1\">\n") {}

void bag_writer_t::begin_element(const char* element, std::string_view name)
{
    m_out += '<';
    m_out += element;
    m_out += " name=\"";
    append_text(m_out, name);
    m_out += "\">";
}

void bag_writer_t::end_element(const char* element)
{
    m_out += "</";
    m_out += element;
    m_out += ">\n";
}

void bag_writer_t::value(std::string_view name, const variant_t& value)
{
    const char* const element = type_name(value.type());
    begin_element(element, name);
    switch (value.type()) {
    case variant_type_t::empty:
        break;
    case variant_type_t::boolean:
        m_out += value.get<bool>() ? "true" : "false";
        break;
    case variant_type_t::integer:
    case variant_type_t::integer64:
        append_number(m_out, value.get<long long>());
        break;
    case variant_type_t::real:
        append_number(m_out, value.get<double>());
        break;
    case variant_type_t::text:
        append_text(m_out, value.text());
        break;
    }
    end_element(element);
}

void bag_writer_t::text(std::string_view name, std::string_view text)
{
    const char* const element = type_name(variant_type_t::text);
    begin_element(element, name);
    append_text(m_out, text);
    end_element(element);
}

bool bag_writer_t::begin_child(std::string_view name)
{
    if (m_depth >= max_bag_nesting)
        return false;
    ++m_depth;
    begin_element("child", name);
    m_out += '\n';
    return true;
}

void bag_writer_t::end_child()
{
    --m_depth;
    end_element("child");
}

void bag_writer_t::end()
{
    m_out += "</bag>\n";
}

} // namespace _internal
} // namespace gen_helpers2
