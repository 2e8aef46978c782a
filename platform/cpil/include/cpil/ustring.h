#pragma once

#include "cpil/export.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace CPIL_2_18 {

/// A byte of UTF-8: `const uchar_t*` is a zero-terminated UTF-8 string.
using uchar_t = unsigned char;

/// A UTF-8 text by value. It holds whatever bytes it was given; is_valid() tells whether they are UTF-8.
/// Use it at interfaces that want to say "this is UTF-8"; use std::string for everything else.
class CPIL_EXPORT ustring
{
public:
    ustring() = default;
    ustring(std::string text) : m_text(std::move(text)) {}
    ustring(std::string_view text) : m_text(text) {}
    /// A null pointer gives the empty text.
    ustring(const char* text) : m_text(text ? text : "") {}
    ustring(const uchar_t* text) : ustring(reinterpret_cast<const char*>(text)) {}

    const uchar_t* c_str() const noexcept { return reinterpret_cast<const uchar_t*>(m_text.c_str()); }
    /// The same bytes, for what takes a plain string.
    const std::string& as_string() const noexcept { return m_text; }

    bool empty() const noexcept { return m_text.empty(); }
    /// In bytes.
    std::size_t size() const noexcept { return m_text.size(); }
    /// In code points; a byte that is no part of one counts as one.
    std::size_t length() const noexcept;
    bool is_valid() const noexcept;

    ustring& operator+=(const ustring& other)
    {
        m_text += other.m_text;
        return *this;
    }
    friend ustring operator+(ustring a, const ustring& b) { return a += b; }
    friend bool operator==(const ustring& a, const ustring& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator!=(const ustring& a, const ustring& b) noexcept { return a.m_text != b.m_text; }
    /// The order of the bytes, which is that of the code points.
    friend bool operator<(const ustring& a, const ustring& b) noexcept { return a.m_text < b.m_text; }
    friend std::ostream& operator<<(std::ostream& out, const ustring& s) { return out << s.m_text; }

private:
    std::string m_text;
};

} // namespace CPIL_2_18

namespace cpil2 = CPIL_2_18;
