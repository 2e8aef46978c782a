#pragma once

#include "gen_helpers2/export.h"

#include <memory>
#include <string>

namespace gen_helpers2 {

/// The result of an operation: success, or an identifier for programs and a message for people.
///
/// Use it for what can go wrong in normal use (a value out of range, a file that cannot be read). Do not use
/// it for a caller's mistake: that is an assertion. Success is a null pointer and costs no allocation; copies
/// share the text.
///
/// \code
/// gen_helpers2::error_code_t result = storage->save();
/// if (result.failed())
///     show(result.message());
/// \endcode
class GEN_HELPERS2_EXPORT error_code_t
{
public:
    /// Success.
    error_code_t() noexcept = default;

    /// An error of another kind; `identifier` looks like "gh2::error::Io" and must not be empty.
    error_code_t(const std::string& identifier, const std::string& message);

    /// No error.
    static error_code_t success() noexcept { return error_code_t(); }
    /// "gh2::error::IsNot.Valid.Parameter": an argument that the operation cannot take.
    static error_code_t invalid_parameter(const std::string& message);
    /// "gh2::error::IsNot.Valid.Value": a value that was entered or read and is not accepted.
    static error_code_t invalid_value(const std::string& message);
    /// "gh2::error::Io": the system refused to read or write.
    static error_code_t io_error(const std::string& message);
    /// "gh2::error::Damaged": data was read but is not what it should be.
    static error_code_t damaged(const std::string& message);

    /// Whether there is no error.
    bool succeeded() const noexcept { return !m_error; }
    /// Whether there is one.
    bool failed() const noexcept { return static_cast<bool>(m_error); }

    /// Empty for success.
    const std::string& identifier() const noexcept;
    /// Empty for success.
    const std::string& message() const noexcept;
    /// "identifier: message", or "success".
    std::string as_string() const;

    /// True if both have the same identifier; messages are not compared.
    friend bool operator==(const error_code_t& a, const error_code_t& b) noexcept
    {
        return a.identifier() == b.identifier();
    }
    friend bool operator!=(const error_code_t& a, const error_code_t& b) noexcept { return !(a == b); }

private:
    struct error_t;
    std::shared_ptr<const error_t> m_error;
};

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
