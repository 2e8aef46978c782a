// Stands in a program that is started with it (LD_PRELOAD): after what the toolkit complains about come the
// functions that it was called from, each in a line that begins with "  from ".
#include <execinfo.h>
#include <glib.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

GLogWriterOutput write_with_stack(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data)
{
    if (!(level & (G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)))
        return g_log_writer_default(level, fields, count, data);
    const std::unique_ptr<char, decltype(&g_free)> said(
        g_log_writer_format_fields(level, fields, count, FALSE), &g_free);
    std::string text = std::string(said.get()) + '\n';
    void* callers[60];
    const int depth = backtrace(callers, 60);
    const std::unique_ptr<char*, decltype(&free)> names(backtrace_symbols(callers, depth), &free);
    for (int at = 1; names && at < depth; ++at)
        text.append("  from ").append(names.get()[at]).append(1, '\n');
    const bool whole = write(STDERR_FILENO, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    return whole ? G_LOG_WRITER_HANDLED : G_LOG_WRITER_UNHANDLED;
}

[[gnu::constructor]] void begin()
{
    unsetenv("LD_PRELOAD"); // not for what the program starts
    g_log_set_writer_func(write_with_stack, nullptr, nullptr);
}

} // namespace
