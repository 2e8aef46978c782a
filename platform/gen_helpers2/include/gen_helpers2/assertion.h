/// @file
/// Checking what must hold, and going on all the same.
#pragma once

#include "gen_helpers2/export.h"

#include <functional>
#include <string>

namespace gen_helpers2 {

/// One broken assumption.
struct assertion_t
{
    std::string condition; ///< the text of the expression that was false, or a sentence
    std::string unit;      ///< the part of the product that noticed
    std::string function;
    int line = 0;
};

using assertion_handler_t = std::function<void(const assertion_t&)>;

/// Replaces the handler that is told of every assertion and returns the one before. An empty handler (the
/// initial state) leaves only the entry with level ERROR on the logger "assert". Safe in any thread; the
/// handler is called in the thread that asserts, and what it throws is dropped.
GEN_HELPERS2_EXPORT assertion_handler_t set_assertion_handler(assertion_handler_t handler);

/// Tells the log and the handler. Never ends the process, never throws: the caller goes on.
GEN_HELPERS2_EXPORT void report_assertion(const char* condition, const char* unit, int line,
                                          const char* function) noexcept;
GEN_HELPERS2_EXPORT void report_assertion(const std::string& condition, const std::string& unit, int line,
                                          const std::string& function) noexcept;

namespace _internal {

inline bool check_assertion(bool holds, const char* condition, const char* unit, int line,
                            const char* function) noexcept
{
    if (__builtin_expect(!holds, 0))
        report_assertion(condition, unit, line, function);
    return holds;
}

} // namespace _internal
} // namespace gen_helpers2

namespace gh2 = gen_helpers2;

/// Yields whether the expression holds, and reports it if not, in every kind of build. Write
/// `if (!GH2_ASSERT(p != nullptr, "caption")) return;`
#define GH2_ASSERT(expr, unit)                                                                               \
    (::gen_helpers2::_internal::check_assertion(static_cast<bool>(expr), #expr, unit, __LINE__, __func__))

/// The same with a sentence in place of the expression's text.
#define GH2_ASSERT_TEXT(expr, text, unit)                                                                    \
    (::gen_helpers2::_internal::check_assertion(static_cast<bool>(expr), text, unit, __LINE__, __func__))
