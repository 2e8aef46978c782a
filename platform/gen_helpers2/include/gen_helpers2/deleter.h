#pragma once

namespace gen_helpers2 {

/// Ends what a C library made by the function that it has for that:
///
///     const std::unique_ptr<char, deleter_t<free>> text(strdup("x"));
/// @since 3.1
template <auto Function>
struct deleter_t
{
    template <class T>
    void operator()(T* object) const
    {
        Function(object);
    }
};

} // namespace gen_helpers2
