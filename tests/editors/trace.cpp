// Apart from the toolkit, whose headers change what the log's make of a text.
#include "trace.h"

#include <log4cplus/appender.h>
#include <log4cplus/helpers/stringhelper.h>
#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

#include <algorithm>

namespace test {
namespace {

class lines_t : public log4cplus::Appender
{
public:
    ~lines_t() override { destructorImpl(); }
    void close() override {}
    std::vector<std::string> lines;

protected:
    void append(const log4cplus::spi::InternalLoggingEvent& event) override
    {
        lines.push_back(LOG4CPLUS_TSTRING_TO_STRING(event.getMessage()));
    }
};

} // namespace

struct trace_t::impl_t
{
    log4cplus::Logger logger;
    lines_t* kept = new lines_t;
    log4cplus::SharedAppenderPtr appender{kept};
};

trace_t::trace_t(const std::string& logger) : m_impl(new impl_t)
{
    m_impl->logger = log4cplus::Logger::getInstance(LOG4CPLUS_STRING_TO_TSTRING(logger));
    m_impl->logger.setLogLevel(log4cplus::TRACE_LOG_LEVEL);
    m_impl->logger.addAppender(m_impl->appender);
}

trace_t::~trace_t()
{
    m_impl->logger.removeAppender(m_impl->appender);
    m_impl->logger.setLogLevel(log4cplus::NOT_SET_LOG_LEVEL);
}

const std::vector<std::string>& trace_t::lines() const
{
    return m_impl->kept->lines;
}

bool trace_t::has(const std::string& beginning) const
{
    return std::any_of(lines().begin(), lines().end(),
                       [&](const std::string& line) { return line.rfind(beginning, 0) == 0; });
}

} // namespace test
