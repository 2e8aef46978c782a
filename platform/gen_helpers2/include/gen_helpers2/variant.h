#pragma once

#include "gen_helpers2/export.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace gen_helpers2 {

class variant_bag_t;

/// What a value can be.
enum class variant_type_t : std::uint8_t
{
    empty,     ///< no value
    boolean,   ///< bool
    integer,   ///< int
    integer64, ///< long long
    real,      ///< double
    text       ///< bytes, usually UTF-8
};

/// A value of one of a few types, in 16 bytes.
///
/// Reading never throws: get<T>() of a value that is no T gives T's default (false, 0, empty text).
/// An int may be read as long long and as double; a long long as int if it fits. Nothing else is converted: a
/// text "5" is no int.
///
/// Readable types: bool, int, long long, double, std::string, const char* and const unsigned char*. The two
/// pointers are zero-terminated UTF-8 strings that live as long as the variant is neither changed nor
/// destroyed; they are never null.
class GEN_HELPERS2_EXPORT variant_t
{
public:
    variant_t() noexcept : m_type(variant_type_t::empty) { m_value.integer64 = 0; }
    // A template, as any pointer would turn into a bool of its own accord.
    template <class T, class = std::enable_if_t<std::is_same<T, bool>::value>>
    variant_t(T value) noexcept : m_type(variant_type_t::boolean)
    {
        m_value.integer64 = value ? 1 : 0;
    }
    variant_t(int value) noexcept : m_type(variant_type_t::integer) { m_value.integer64 = value; }
    variant_t(unsigned int value) noexcept : m_type(variant_type_t::integer64) { m_value.integer64 = value; }
    variant_t(long value) noexcept : m_type(variant_type_t::integer64) { m_value.integer64 = value; }
    variant_t(long long value) noexcept : m_type(variant_type_t::integer64) { m_value.integer64 = value; }
    variant_t(double value) noexcept : m_type(variant_type_t::real) { m_value.real = value; }
    variant_t(std::string_view text) : variant_t() { set_text(text); }
    variant_t(const std::string& text) : variant_t(std::string_view(text)) {}
    /// A null pointer gives the empty variant.
    variant_t(const char* text);
    variant_t(const unsigned char* text) : variant_t(reinterpret_cast<const char*>(text)) {}

    variant_t(const variant_t& other);
    variant_t(variant_t&& other) noexcept : m_value(other.m_value), m_type(other.m_type)
    {
        other.m_type = variant_type_t::empty;
    }
    variant_t& operator=(const variant_t& other);
    variant_t& operator=(variant_t&& other) noexcept;
    ~variant_t()
    {
        if (m_type == variant_type_t::text)
            free_text();
    }

    variant_type_t type() const noexcept { return m_type; }
    bool is_empty() const noexcept { return m_type == variant_type_t::empty; }

    /// Whether get() gives the value as this type.
    template <class T>
    bool can_get() const noexcept;
    /// That type's default (false, 0, an empty text) for what is not of it, and cannot be read as it.
    template <class T>
    T get() const;

    /// The bytes of a text, zero bytes included; empty for other types.
    std::string_view text() const noexcept;

    /// Same type and same value; a double that is no number equals itself.
    friend bool operator==(const variant_t& a, const variant_t& b) noexcept { return a.equals(b); }
    friend bool operator!=(const variant_t& a, const variant_t& b) noexcept { return !a.equals(b); }

private:
    friend class variant_bag_t;
    struct text_t;

    // Bags keep their children where a value would stand. Such a variant never leaves the bag and does not
    // own.
    struct child_t
    {
    };
    static constexpr variant_type_t child_type = static_cast<variant_type_t>(0x80);
    variant_t(child_t, variant_bag_t* child) noexcept : m_type(child_type) { m_value.child = child; }

    void set_text(std::string_view text);
    void free_text() noexcept;
    bool equals(const variant_t& other) const noexcept;

    union value_t {
        long long integer64;
        double real;
        text_t* text;
        variant_bag_t* child;
    };

    value_t m_value;
    variant_type_t m_type;
};

// clang-format off
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<bool>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<int>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<long long>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<double>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<std::string>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<const char*>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::can_get<const unsigned char*>() const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_t::get<bool>() const;
template <> GEN_HELPERS2_EXPORT int variant_t::get<int>() const;
template <> GEN_HELPERS2_EXPORT long long variant_t::get<long long>() const;
template <> GEN_HELPERS2_EXPORT double variant_t::get<double>() const;
template <> GEN_HELPERS2_EXPORT std::string variant_t::get<std::string>() const;
template <> GEN_HELPERS2_EXPORT const char* variant_t::get<const char*>() const;
template <> GEN_HELPERS2_EXPORT const unsigned char* variant_t::get<const unsigned char*>() const;
// clang-format on

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
