#pragma once

#include "gen_helpers2/export.h"

#include <memory>
#include <string>

namespace gen_helpers2 {

/// The log's lifetime: a host makes one at the start of main(). Without a configuration of the host's,
/// warnings and errors go to standard error.
class GEN_HELPERS2_EXPORT log_lifetime_t
{
public:
    log_lifetime_t();
    ~log_lifetime_t();
    log_lifetime_t(const log_lifetime_t&) = delete;
    log_lifetime_t& operator=(const log_lifetime_t&) = delete;

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

/// The product's log: log4cplus, one logger a source unit, configured by the host. Texts are UTF-8; any
/// thread.
///
///     gen_helpers2::log_error("wx_helpers1.image_loader", "no picture named " + name);
GEN_HELPERS2_EXPORT void log_error(const std::string& logger, const std::string& text);
/// For what the program can live with.
GEN_HELPERS2_EXPORT void log_warning(const std::string& logger, const std::string& text);
/// For whoever looks for a fault.
GEN_HELPERS2_EXPORT void log_trace(const std::string& logger, const std::string& text);

/// Whether anybody would see a trace: for texts that are dear to make.
GEN_HELPERS2_EXPORT bool is_trace_enabled(const std::string& logger);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
