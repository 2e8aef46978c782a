#pragma once

#include "cpil/export.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace CPIL_2_18 {
namespace generic {

/// One named argument of a message.
struct varg_t
{
    using value_t = std::variant<std::string, long long, double>;

    template <class N, class V>
    varg_t(N&& n, V&& v) : name(std::forward<N>(n)), value(make_value(std::forward<V>(v)))
    {
    }

    bool is_string() const noexcept { return value.index() == 0; }

    std::string name;
    value_t value;

private:
    template <class V>
    static value_t make_value(V&& v)
    {
        using type = std::remove_cv_t<std::remove_reference_t<V>>;
        if constexpr (std::is_same<type, bool>::value)
            return static_cast<long long>(v ? 1 : 0);
        else if constexpr (std::is_integral<type>::value)
            return static_cast<long long>(v);
        else if constexpr (std::is_floating_point<type>::value)
            return static_cast<double>(v);
        else if constexpr (std::is_same<type, const char*>::value || std::is_same<type, char*>::value)
            return std::string(v ? v : "");
        else if constexpr (std::is_same<type, const unsigned char*>::value)
            return std::string(v ? reinterpret_cast<const char*>(v) : "");
        else if constexpr (std::is_same<type, value_t>::value)
            return std::forward<V>(v);
        else
            return std::string(std::forward<V>(v));
    }
};

/// The named arguments of a message, in their order. A value is a text (UTF-8), a whole number or a real one.
///
/// \code
/// using CPIL_2_18::generic::varg_list;
/// message.as_ustring(varg_list{{"field_name", "Port"}, {"max_len", 5}});
/// \endcode
class CPIL_EXPORT varg_list
{
public:
    using const_iterator = std::vector<varg_t>::const_iterator;

    varg_list() = default;
    varg_list(std::initializer_list<varg_t> args) : m_args(args) {}

    /// Adds at the end. Of two arguments with the same name the first counts.
    template <class V>
    varg_list& add(std::string_view name, V&& value)
    {
        m_args.emplace_back(name, std::forward<V>(value));
        return *this;
    }

    bool empty() const noexcept { return m_args.empty(); }
    std::size_t size() const noexcept { return m_args.size(); }
    const_iterator begin() const noexcept { return m_args.begin(); }
    const_iterator end() const noexcept { return m_args.end(); }
    const varg_t& operator[](std::size_t i) const noexcept { return m_args[i]; }

    /// Null if there is none.
    const varg_t* find(std::string_view name) const noexcept;

private:
    std::vector<varg_t> m_args;
};

} // namespace generic
} // namespace CPIL_2_18

namespace cpil2 = CPIL_2_18;
