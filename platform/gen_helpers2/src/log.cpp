#include "gen_helpers2/log.h"

#include <log4cplus/consoleappender.h>
#include <log4cplus/helpers/stringhelper.h>
#include <log4cplus/initializer.h>
#include <log4cplus/layout.h>
#include <log4cplus/logger.h>

namespace gen_helpers2 {
namespace {

void write(const std::string& name, log4cplus::LogLevel level, const std::string& text)
{
    const auto logger = log4cplus::Logger::getInstance(LOG4CPLUS_STRING_TO_TSTRING(name));
    if (logger.isEnabledFor(level))
        logger.log(level, LOG4CPLUS_STRING_TO_TSTRING(text));
}

} // namespace

struct log_lifetime_t::impl_t
{
    log4cplus::Initializer initializer;
};

log_lifetime_t::log_lifetime_t() : m_impl(new impl_t)
{
    log4cplus::Logger root = log4cplus::Logger::getRoot();
    if (!root.getAllAppenders().empty())
        return;
    constexpr bool to_standard_error = true;
    constexpr bool flush_at_once = true;
    log4cplus::SharedAppenderPtr console(new log4cplus::ConsoleAppender(to_standard_error, flush_at_once));
    console->setLayout(std::make_unique<log4cplus::PatternLayout>(LOG4CPLUS_TEXT("%p %c: %m%n")));
    root.addAppender(console);
    root.setLogLevel(log4cplus::WARN_LOG_LEVEL);
}

log_lifetime_t::~log_lifetime_t() = default;

void log_error(const std::string& logger, const std::string& text)
{
    write(logger, log4cplus::ERROR_LOG_LEVEL, text);
}

void log_warning(const std::string& logger, const std::string& text)
{
    write(logger, log4cplus::WARN_LOG_LEVEL, text);
}

void log_trace(const std::string& logger, const std::string& text)
{
    write(logger, log4cplus::TRACE_LOG_LEVEL, text);
}

bool is_trace_enabled(const std::string& name)
{
    return log4cplus::Logger::getInstance(LOG4CPLUS_STRING_TO_TSTRING(name))
        .isEnabledFor(log4cplus::TRACE_LOG_LEVEL);
}

} // namespace gen_helpers2
