#include "contents.h"

#include "background.h"
#include "saved_keys.h"
#include "text_writer.h"

#include <gen_helpers2/bag_stream.h>
#include <gen_helpers2/log.h>

#include <cstdint>
#include <filesystem>
#include <functional>

namespace commondlg3 {
namespace {

using gen_helpers2::bag_file_writer_t;
using gen_helpers2::error_code_t;

// Freeing fewer takes no time worth saving.
constexpr std::size_t many_lines = 20000;

class entry_writer_t
{
public:
    entry_writer_t(bag_file_writer_t& out, bool show_debug, bool keep_times)
        : m_out(out), m_show_debug(show_debug), m_keep_times(keep_times)
    {
    }

    void write(const entry_contents_t& entry)
    {
        m_out.begin_child(saved::entry);
        m_out.put(saved::message, entry.message);
        m_out.put(saved::caption, entry.caption);
        if (entry.image)
            m_out.put(saved::image, *entry.image);
        entry.lines.for_each([this](const vdxcfrw7::line_t& line, std::uint64_t count, std::int64_t time) {
            if (!line.has(vdxcfrw7::line_t::status))
                write_line(line.get_text(), static_cast<int>(line.severity), time, count);
        });
        for (const auto& batch : entry.unshown)
            for (std::size_t i = batch->shown; i < batch->lines.size(); ++i) {
                const line_batch_t::line_t& line = batch->lines[i];
                const bool dropped = (line.severity & msngr2::sev_status) ||
                                     ((line.severity & msngr2::sev_debug) && !m_show_debug);
                if (!dropped)
                    write_line(line.text(), line.severity, batch->time_of(line), line.count);
            }
        m_out.end_child();
    }

private:
    void write_line(std::string_view text, int severity, std::int64_t time, std::uint64_t count)
    {
        for (std::uint64_t said = 0; said < count && m_out.error().succeeded(); ++said) {
            m_out.begin_child(saved::line);
            m_out.put(saved::message, text);
            m_out.put(saved::severity, severity);
            if (m_keep_times && time != vdxcfrw7::line_store_t::no_time)
                m_out.put_value(saved::time, static_cast<long long>(time));
            m_out.end_child();
        }
    }

    bag_file_writer_t& m_out;
    bool m_show_debug;
    bool m_keep_times;
};

// Passes a file on to another.
class copier_t final : public gen_helpers2::bag_handler_t
{
public:
    explicit copier_t(bag_file_writer_t& out) : m_out(out) {}
    ~copier_t() override = default;

    void begin_child(std::string_view name) override
    {
        ++m_depth;
        m_out.begin_child(name);
    }
    void value(std::string_view name, gen_helpers2::variant_t value) override
    {
        m_out.put_value(name, value);
    }
    void end_child() override
    {
        --m_depth;
        m_out.end_child();
    }
    /// Closes what a file that broke off has left open.
    void end_all()
    {
        while (m_depth > 0)
            end_child();
    }
    bool goes_on() override { return m_out.error().succeeded(); }

private:
    bag_file_writer_t& m_out;
    int m_depth = 0;
};

} // namespace

bool keep_aside(const gen_helpers2::path_t& file)
{
    const std::filesystem::path whole(file.as_string());
    std::filesystem::path aside = whole;
    aside += ".damaged";
    std::error_code error;
    std::filesystem::remove(aside, error);
    std::filesystem::create_hard_link(whole, aside, error);
    if (error)
        std::filesystem::copy_file(whole, aside, error);
    if (error)
        gen_helpers2::log_error("inplace_ctrl", "the damaged log was not kept aside: " + error.message());
    return !error;
}

void free_lines(vdxcfrw7::line_store_t lines, std::vector<std::unique_ptr<line_batch_t>> unshown)
{
    std::size_t count = lines.size();
    for (const auto& batch : unshown)
        count += batch->lines.size();
    if (count < many_lines)
        return;
    struct kept_t
    {
        vdxcfrw7::line_store_t lines;
        std::vector<std::unique_ptr<line_batch_t>> unshown;
    };
    background_t::get().add(
        background_t::kind_t::may_be_dropped,
        [kept = std::make_shared<kept_t>(kept_t{std::move(lines), std::move(unshown)})] {});
}

inplace_contents_t::inplace_contents_t() = default;
inplace_contents_t::inplace_contents_t(inplace_contents_t&& other) noexcept = default;

inplace_contents_t& inplace_contents_t::operator=(inplace_contents_t&& other) noexcept
{
    std::swap(m_data, other.m_data);
    return *this;
}

inplace_contents_t::~inplace_contents_t()
{
    if (m_data)
        for (entry_contents_t& entry : m_data->entries)
            free_lines(std::move(entry.lines), std::move(entry.unshown));
}

error_code_t inplace_contents_t::save(const gen_helpers2::path_t& file) const
{
    bag_file_writer_t out(file);
    if (m_data) {
        for (const gen_helpers2::path_t& broken : m_data->not_kept)
            if (!keep_aside(broken))
                return error_code_t::io_error("the damaged log before it was not kept aside");
        for (const gen_helpers2::path_t& unread : m_data->unread) {
            if (unread.is_missing())
                continue;
            copier_t copier(out);
            const error_code_t read = gen_helpers2::read_variant_bag(unread, copier);
            if (out.error().failed())
                break;
            if (read.failed()) {
                gen_helpers2::log_warning("inplace_ctrl",
                                          "the log was not read to its end: " + read.as_string());
                if (!keep_aside(unread))
                    return read;
                copier.end_all();
            }
        }
        for (const entry_contents_t& entry : m_data->entries) {
            if (out.error().failed())
                break;
            entry_writer_t(out, m_data->show_debug, m_data->keep_times).write(entry);
        }
    }
    return out.commit();
}

error_code_t inplace_contents_t::save_as(const gen_helpers2::path_t& file, text_format_t format,
                                         const text_options_t& options) const
{
    static const std::vector<entry_contents_t> none;
    return write_text(m_data ? m_data->entries : none, m_data && m_data->show_debug, file, format, options);
}

void inplace_contents_t::save_later(const gen_helpers2::path_t& file,
                                    std::function<void(const error_code_t&)> done)
{
    const auto contents = std::make_shared<inplace_contents_t>(std::move(*this));
    background_t::get().add(background_t::kind_t::must_be_done, [contents, file, done = std::move(done)] {
        const error_code_t saved = contents->save(file);
        if (saved.failed())
            gen_helpers2::log_error("inplace_ctrl", "the log was not kept: " + saved.as_string());
        // Freed here, where nobody waits for it.
        if (contents->m_data)
            contents->m_data->entries.clear();
        if (done)
            done(saved);
    });
}

void inplace_contents_t::wait_until_saved()
{
    background_t::get().wait();
}

} // namespace commondlg3
