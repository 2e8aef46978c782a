#include "gen_helpers2/variant.h"

#include <climits>
#include <cstring>
#include <new>

namespace gen_helpers2 {

/// Length and bytes in one block; the bytes begin behind the struct and end with a zero that is not counted.
struct variant_t::text_t
{
    std::size_t size;

    char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
};

void variant_t::set_text(std::string_view text)
{
    // The empty text needs no block.
    text_t* block = nullptr;
    if (!text.empty()) {
        block = static_cast<text_t*>(::operator new(sizeof(text_t) + text.size() + 1));
        block->size = text.size();
        std::memcpy(block->bytes(), text.data(), text.size());
        block->bytes()[text.size()] = '\0';
    }
    m_value.text = block;
    m_type = variant_type_t::text;
}

void variant_t::free_text() noexcept
{
    ::operator delete(m_value.text);
}

variant_t::variant_t(const char* text) : variant_t()
{
    if (text)
        set_text(text);
}

variant_t::variant_t(const variant_t& other) : m_value(other.m_value), m_type(other.m_type)
{
    if (m_type == variant_type_t::text) {
        m_type = variant_type_t::empty;
        set_text(other.text());
    }
}

variant_t& variant_t::operator=(const variant_t& other)
{
    if (this != &other)
        *this = variant_t(other);
    return *this;
}

variant_t& variant_t::operator=(variant_t&& other) noexcept
{
    std::swap(m_value, other.m_value);
    std::swap(m_type, other.m_type);
    return *this;
}

std::string_view variant_t::text() const noexcept
{
    if (m_type != variant_type_t::text || !m_value.text)
        return std::string_view("", 0);
    return std::string_view(m_value.text->bytes(), m_value.text->size);
}

bool variant_t::equals(const variant_t& other) const noexcept
{
    if (m_type != other.m_type)
        return false;
    switch (m_type) {
    case variant_type_t::empty:
        return true;
    case variant_type_t::real:
        return m_value.real == other.m_value.real ||
               (m_value.real != m_value.real && other.m_value.real != other.m_value.real);
    case variant_type_t::text:
        return text() == other.text();
    default:
        return m_value.integer64 == other.m_value.integer64;
    }
}

template <>
bool variant_t::can_get<bool>() const noexcept
{
    return m_type == variant_type_t::boolean;
}

template <>
bool variant_t::can_get<int>() const noexcept
{
    return m_type == variant_type_t::integer ||
           (m_type == variant_type_t::integer64 && m_value.integer64 >= INT_MIN &&
            m_value.integer64 <= INT_MAX);
}

template <>
bool variant_t::can_get<long long>() const noexcept
{
    return m_type == variant_type_t::integer || m_type == variant_type_t::integer64;
}

template <>
bool variant_t::can_get<double>() const noexcept
{
    return m_type == variant_type_t::real || m_type == variant_type_t::integer;
}

template <>
bool variant_t::can_get<std::string>() const noexcept
{
    return m_type == variant_type_t::text;
}

template <>
bool variant_t::can_get<const char*>() const noexcept
{
    return m_type == variant_type_t::text;
}

template <>
bool variant_t::can_get<const unsigned char*>() const noexcept
{
    return m_type == variant_type_t::text;
}

template <>
bool variant_t::get<bool>() const
{
    return can_get<bool>() && m_value.integer64 != 0;
}

template <>
int variant_t::get<int>() const
{
    return can_get<int>() ? static_cast<int>(m_value.integer64) : 0;
}

template <>
long long variant_t::get<long long>() const
{
    return can_get<long long>() ? m_value.integer64 : 0;
}

template <>
double variant_t::get<double>() const
{
    if (m_type == variant_type_t::real)
        return m_value.real;
    return can_get<double>() ? static_cast<double>(m_value.integer64) : 0.0;
}

template <>
std::string variant_t::get<std::string>() const
{
    return std::string(text());
}

template <>
const char* variant_t::get<const char*>() const
{
    return text().data();
}

template <>
const unsigned char* variant_t::get<const unsigned char*>() const
{
    return reinterpret_cast<const unsigned char*>(text().data());
}

} // namespace gen_helpers2
