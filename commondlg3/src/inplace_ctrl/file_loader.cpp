#include "file_loader.h"

#include "background.h"
#include "saved_keys.h"

#include <gen_helpers2/bag_stream.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/tasks.h>

#include <atomic>
#include <string_view>

namespace commondlg3 {

struct file_loader_t::shared_t
{
    std::atomic<bool> stopped{false};
    // The GUI thread's alone.
    std::function<void(loaded_piece_t)> take;
    std::function<void(bool)> ended;
};

namespace {

using gen_helpers2::variant_bag_t;

constexpr char file_loader_unit[] = "inplace_ctrl";
constexpr std::size_t piece_bytes = std::size_t(512) * 1024;
constexpr std::size_t piece_lines = 8192;

class reader_t final : public gen_helpers2::bag_handler_t
{
public:
    explicit reader_t(std::shared_ptr<file_loader_t::shared_t> shared) : m_shared(std::move(shared)) {}
    ~reader_t() override = default;

    void begin_child(std::string_view name) override
    {
        ++m_depth;
        if (m_depth == 1 && name == saved::entry) {
            m_in_entry = true;
            m_failed = false;
            m_piece = {std::make_unique<variant_bag_t>(), std::make_unique<line_batch_t>()};
        } else if (m_depth == 2 && m_in_entry && name == saved::line) {
            m_in_line = true;
            m_line.clear();
        }
    }

    void value(std::string_view name, gen_helpers2::variant_t value) override
    {
        if (m_depth == 1 && m_in_entry && m_piece.record)
            m_piece.record->add_value(name, std::move(value));
        else if (m_depth == 2 && m_in_line)
            m_line.add_value(name, std::move(value));
    }

    void end_child() override
    {
        if (m_depth == 2 && m_in_line) {
            m_in_line = false;
            add_line();
        } else if (m_depth == 1 && m_in_entry) {
            m_in_entry = false;
            hand_over();
        }
        --m_depth;
    }

    bool goes_on() override { return !m_shared->stopped; }

private:
    void add_line()
    {
        if (m_failed)
            return;
        saved_line_t line;
        const gen_helpers2::error_code_t read = read_saved_line(m_line, line);
        if (read.failed()) {
            m_failed = true; // as when the bag is loaded: the lines before it stay
            gen_helpers2::log_error(file_loader_unit,
                                    "event_entry_t::load(value, msngr).succeeded(): " + read.as_string());
            return;
        }
        m_piece.lines->add(line.severity, line.text, line.time);
        if (m_piece.lines->bytes >= piece_bytes || m_piece.lines->lines.size() >= piece_lines)
            hand_over();
    }

    void hand_over()
    {
        const auto piece = std::make_shared<loaded_piece_t>(std::move(m_piece));
        m_piece = {nullptr, std::make_unique<line_batch_t>()};
        wx_helpers1::tasks::Scheduler::Post([shared = m_shared, piece] {
            if (const auto take = shared->take)
                take(std::move(*piece));
        });
    }

    std::shared_ptr<file_loader_t::shared_t> m_shared;
    std::size_t m_depth = 0;
    bool m_in_entry = false;
    bool m_in_line = false;
    bool m_failed = false;
    loaded_piece_t m_piece;
    variant_bag_t m_line;
};

} // namespace

file_loader_t::file_loader_t(const gen_helpers2::path_t& file, std::function<void(loaded_piece_t)> take,
                             std::function<void(bool)> ended)
    : m_file(file), m_shared(std::make_shared<shared_t>())
{
    m_shared->take = std::move(take);
    m_shared->ended = std::move(ended);
    // Behind the saving of this very file, if that is not done yet.
    background_t::get().add(background_t::kind_t::may_be_dropped, [shared = m_shared, file] {
        reader_t reader(shared);
        const gen_helpers2::error_code_t read =
            file.is_missing() ? gen_helpers2::error_code_t() : gen_helpers2::read_variant_bag(file, reader);
        if (shared->stopped)
            return;
        bool kept = true;
        if (read.failed()) {
            gen_helpers2::log_warning(file_loader_unit,
                                      "the log was not read to its end: " + read.as_string());
            kept = keep_aside(file);
        }
        wx_helpers1::tasks::Scheduler::Post([shared, kept] {
            if (const auto tell = shared->ended) // a copy: telling ends the loader
                tell(kept);
        });
    });
}

file_loader_t::~file_loader_t()
{
    m_shared->stopped = true;
    m_shared->take = nullptr;
    m_shared->ended = nullptr;
}

} // namespace commondlg3
