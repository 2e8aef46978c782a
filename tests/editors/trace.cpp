// Apart from the toolkit, whose headers change what the log's make of a text.
#include "trace.h"

#include <log4cplus/appender.h>
#include <log4cplus/helpers/stringhelper.h>
#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

namespace test {
namespace {

class lines_t : public log4cplus::Appender
{
public:
    ~lines_t() override { destructorImpl(); }
    void close() override {}
    std::string lines;

protected:
    void append(const log4cplus::spi::InternalLoggingEvent& event) override
    {
        lines += LOG4CPLUS_TSTRING_TO_STRING(event.getMessage()) + "\n";
    }
};

} // namespace

std::string trace_of(const std::string& name, const std::function<void()>& act)
{
    const log4cplus::SharedAppenderPtr appender(new lines_t);
    auto logger = log4cplus::Logger::getInstance(LOG4CPLUS_STRING_TO_TSTRING(name));
    logger.setLogLevel(log4cplus::TRACE_LOG_LEVEL);
    logger.addAppender(appender);
    act();
    logger.removeAppender(appender);
    logger.setLogLevel(log4cplus::NOT_SET_LOG_LEVEL);
    return static_cast<lines_t*>(appender.get())->lines;
}

} // namespace test
