#include "gen_helpers2/error_code.h"

namespace gen_helpers2 {

struct error_code_t::error_t
{
    std::string identifier;
    std::string message;
};

namespace {
const std::string& empty_text() noexcept
{
    static const std::string text;
    return text;
}
} // namespace

error_code_t::error_code_t(const std::string& identifier, const std::string& message)
    : m_error(std::make_shared<const error_t>(error_t{identifier, message}))
{
}

error_code_t error_code_t::invalid_parameter(const std::string& message)
{
    return error_code_t("gh2::error::IsNot.Valid.Parameter", message);
}

error_code_t error_code_t::invalid_value(const std::string& message)
{
    return error_code_t("gh2::error::IsNot.Valid.Value", message);
}

error_code_t error_code_t::io_error(const std::string& message)
{
    return error_code_t("gh2::error::Io", message);
}

error_code_t error_code_t::damaged(const std::string& message)
{
    return error_code_t("gh2::error::Damaged", message);
}

const std::string& error_code_t::identifier() const noexcept
{
    return m_error ? m_error->identifier : empty_text();
}

const std::string& error_code_t::message() const noexcept
{
    return m_error ? m_error->message : empty_text();
}

std::string error_code_t::as_string() const
{
    if (succeeded())
        return "success";
    return m_error->message.empty() ? m_error->identifier : m_error->identifier + ": " + m_error->message;
}

} // namespace gen_helpers2
