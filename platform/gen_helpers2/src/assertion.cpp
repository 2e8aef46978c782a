#include "gen_helpers2/assertion.h"

#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>

#include <memory>
#include <mutex>
#include <utility>

namespace gen_helpers2 {

namespace {

struct handler_place_t
{
    std::mutex mutex;
    std::shared_ptr<const assertion_handler_t> handler;
};

handler_place_t& handler_place()
{
    // Never destroyed: destructors of static objects may assert as well.
    static handler_place_t* const place = new handler_place_t;
    return *place;
}

void write_to_log(const assertion_t& a)
{
    log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("assert"));
    LOG4CPLUS_ERROR(logger,
                    a.unit << ": " << a.condition << " (" << a.function << ", line " << a.line << ")");
}

} // namespace

assertion_handler_t set_assertion_handler(assertion_handler_t handler)
{
    auto next = handler ? std::make_shared<const assertion_handler_t>(std::move(handler)) : nullptr;
    handler_place_t& place = handler_place();
    {
        const std::lock_guard<std::mutex> lock(place.mutex);
        place.handler.swap(next);
    }
    return next ? *next : assertion_handler_t();
}

void report_assertion(const std::string& condition, const std::string& unit, int line,
                      const std::string& function) noexcept
{
    try {
        assertion_t assertion;
        assertion.condition = condition;
        assertion.unit = unit;
        assertion.function = function;
        assertion.line = line;

        std::shared_ptr<const assertion_handler_t> handler;
        {
            handler_place_t& place = handler_place();
            const std::lock_guard<std::mutex> lock(place.mutex);
            handler = place.handler;
        }
        // The handler runs without the lock, as it may assert or replace itself.
        if (handler)
            (*handler)(assertion);
        write_to_log(assertion);
    } catch (...) {
        // Reporting a mistake must not become a second one.
    }
}

void report_assertion(const char* condition, const char* unit, int line, const char* function) noexcept
{
    try {
        report_assertion(std::string(condition ? condition : ""), std::string(unit ? unit : ""), line,
                         std::string(function ? function : ""));
    } catch (...) {
    }
}

} // namespace gen_helpers2
