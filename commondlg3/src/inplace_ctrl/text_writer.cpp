#include "text_writer.h"

#include <vdx/message_element.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace commondlg3 {
namespace {

using gen_helpers2::error_code_t;
using vdxcfrw7::line_store_t;

// Large enough that the system's calls do not count, small enough for the cache of a processor.
constexpr std::size_t piece = std::size_t(256) * 1024;
constexpr std::size_t lines_between_questions = 4096;

class text_writer_t
{
public:
    text_writer_t(const gen_helpers2::path_t& file, text_format_t format, const text_options_t& options,
                  bool show_debug)
        : m_file(file), m_format(log_format_t::make(format)), m_options(options), m_show_debug(show_debug)
    {
        m_out.reserve(piece + piece / 4);
    }

    error_code_t write(const std::vector<entry_contents_t>& entries)
    {
        for (const entry_contents_t& entry : entries) {
            m_total += entry.lines.size();
            for (const auto& batch : entry.unshown)
                m_total += batch->lines.size() - batch->shown;
        }
        m_format->begin(m_out);
        for (const entry_contents_t& entry : entries)
            if (goes_on())
                write(entry);
        m_format->end(m_out);
        m_file.append(m_out);
        ask();
        return m_given_up ? error_code_t("gh2::error::Canceled", "saving was given up") : m_file.commit();
    }

private:
    bool goes_on() const { return !m_given_up && m_file.error().succeeded(); }

    void ask()
    {
        if (m_options.goes_on && !m_given_up)
            m_given_up = !m_options.goes_on(
                m_total ? static_cast<double>(m_done) / static_cast<double>(m_total) : 1.0);
    }

    void write(const entry_contents_t& entry)
    {
        m_format->begin_entry(m_out, {entry.tag, entry.caption, vdxcfrw7::BodyToText(entry.message)});
        entry.lines.for_each([this](const vdxcfrw7::line_t& line, std::uint64_t count, std::int64_t time) {
            const bool left_out = line.has(vdxcfrw7::line_t::status) ||
                                  (m_options.only_shown && line.has(vdxcfrw7::line_t::hidden));
            write(left_out, line.severity, time, count, [&line] { return line.get_text(); });
        });
        for (const auto& batch : entry.unshown)
            for (std::size_t i = batch->shown; i < batch->lines.size(); ++i) {
                const line_batch_t::line_t& line = batch->lines[i];
                const bool left_out = (line.severity & msngr2::sev_status) ||
                                      ((line.severity & msngr2::sev_debug) && !m_show_debug);
                write(left_out, static_cast<std::uint32_t>(line.severity), batch->time_of(line), line.count,
                      [&line] { return line.text(); });
            }
        m_format->end_entry(m_out);
        write_when_full();
    }

    template <class Text>
    void write(bool left_out, std::uint32_t severity, std::int64_t time, std::uint64_t count, Text&& text)
    {
        if (!goes_on())
            return;
        if (!left_out) {
            const bool with_time = m_options.times && time != line_store_t::no_time;
            m_format->add(m_out,
                          {text(), severity, with_time ? m_time.format(time) : std::string_view(), count});
            write_when_full();
        }
        if (++m_done % lines_between_questions == 0)
            ask();
    }

    void write_when_full()
    {
        if (m_out.size() < piece)
            return;
        m_file.append(m_out);
        m_out.clear();
    }

    gen_helpers2::whole_file_writer_t m_file;
    std::unique_ptr<log_format_t> m_format;
    const text_options_t& m_options;
    bool m_show_debug;
    iso_time_t m_time;
    std::string m_out;
    std::size_t m_total = 0;
    std::size_t m_done = 0;
    bool m_given_up = false;
};

} // namespace

std::string_view iso_time_t::format(std::int64_t time)
{
    const std::int64_t second = time >= 0 ? time / 1000 : (time - 999) / 1000;
    if (second != m_second || m_length == 0) {
        m_second = second;
        const auto seconds = static_cast<std::time_t>(second);
        std::tm parts{};
        if (!localtime_r(&seconds, &parts))
            return {};
        const long offset = parts.tm_gmtoff / 60;
        const long distance = offset < 0 ? -offset : offset;
        m_length =
            std::snprintf(m_text, sizeof m_text, "%04d-%02d-%02dT%02d:%02d:%02d.000%c%02ld:%02ld",
                          parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                          parts.tm_sec, offset < 0 ? '-' : '+', distance / 60, distance % 60);
        m_length = std::clamp(m_length, 0, static_cast<int>(sizeof m_text) - 1);
    }
    const auto rest = static_cast<int>(time - second * 1000);
    char* digits = m_text + m_length - 9; // before "+00:00"
    digits[0] = static_cast<char>('0' + rest / 100);
    digits[1] = static_cast<char>('0' + rest / 10 % 10);
    digits[2] = static_cast<char>('0' + rest % 10);
    return std::string_view(m_text, static_cast<std::size_t>(m_length));
}

error_code_t write_text(const std::vector<entry_contents_t>& entries, bool show_debug,
                        const gen_helpers2::path_t& file, text_format_t format, const text_options_t& options)
{
    return text_writer_t(file, format, options, show_debug).write(entries);
}

} // namespace commondlg3
