#include "gen_helpers2/bag_stream.h"
#include "atomic_file.h"
#include "bag_reader.h"
#include "bag_writer.h"
#include "input_file.h"

#include <limits>
#include <vector>

namespace gen_helpers2 {

struct bag_file_writer_t::impl_t
{
    explicit impl_t(const path_t& file) : out(file) {}

    void write()
    {
        out.append(writer.get_buffer());
        writer.get_buffer().clear();
    }
    void write_when_full()
    {
        if (writer.is_full())
            write();
    }

    _internal::atomic_file_t out;
    _internal::bag_writer_t writer;
    error_code_t misuse;
};

bag_file_writer_t::bag_file_writer_t(const path_t& file) : m_impl(std::make_unique<impl_t>(file)) {}

bag_file_writer_t::~bag_file_writer_t() = default;

void bag_file_writer_t::put(std::string_view name, std::string_view text)
{
    m_impl->writer.text(name, text);
    m_impl->write_when_full();
}

void bag_file_writer_t::put(std::string_view name, int value)
{
    put_value(name, value);
}

void bag_file_writer_t::put_value(std::string_view name, const variant_t& value)
{
    m_impl->writer.value(name, value);
    m_impl->write_when_full();
}

void bag_file_writer_t::begin_child(std::string_view name)
{
    if (!m_impl->writer.begin_child(name))
        m_impl->misuse = error_code_t::invalid_parameter("the bag is nested too deeply for a file");
}

void bag_file_writer_t::end_child()
{
    if (m_impl->writer.get_depth() > 0)
        m_impl->writer.end_child();
    m_impl->write_when_full();
}

const error_code_t& bag_file_writer_t::error() const noexcept
{
    return m_impl->misuse.failed() ? m_impl->misuse : m_impl->out.error();
}

error_code_t bag_file_writer_t::commit()
{
    if (m_impl->writer.get_depth() > 0)
        m_impl->misuse = error_code_t::invalid_parameter("a child was not ended");
    if (error().failed())
        return error();
    m_impl->writer.end();
    m_impl->write();
    return m_impl->out.commit();
}

bag_handler_t::~bag_handler_t() = default;

error_code_t read_variant_bag(const path_t& file, bag_handler_t& handler)
{
    _internal::input_file_t in(file, std::numeric_limits<std::size_t>::max());
    _internal::bag_reader_t reader(handler);
    std::vector<char> buffer(_internal::bag_writer_t::block);
    while (const std::size_t got = in.read(buffer.data(), buffer.size())) {
        if (!handler.goes_on())
            return error_code_t::io_error("the reading was ended");
        if (!reader.read({buffer.data(), got}))
            break;
    }
    return in.error().failed() ? in.error() : reader.finish();
}

} // namespace gen_helpers2
