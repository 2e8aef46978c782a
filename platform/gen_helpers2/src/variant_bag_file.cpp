#include "gen_helpers2/variant_bag_file.h"
#include "atomic_file.h"
#include "bag_reader.h"
#include "bag_writer.h"
#include "gen_helpers2/file_transaction.h"
#include "input_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace gen_helpers2 {

namespace {

/// Calls sink(std::string&) with every full block, to be emptied, and with the last one.
template <class Sink>
error_code_t write_bag(const variant_bag_t& bag, Sink&& sink)
{
    _internal::bag_writer_t writer;
    std::vector<std::pair<variant_bag_t::const_iterator, variant_bag_t::const_iterator>> open;
    open.emplace_back(bag.begin(), bag.end());
    for (;;) {
        auto& [item, end] = open.back();
        if (item == end) {
            open.pop_back();
            if (open.empty())
                break;
            writer.end_child();
            continue;
        }
        const variant_bag_t::item_t& current = *item++;
        if (current.is_value())
            writer.value(current.name(), current.value());
        else {
            if (!writer.begin_child(current.name()))
                return error_code_t::invalid_parameter("the bag is nested too deeply for a file");
            open.emplace_back(current.child()->begin(), current.child()->end());
        }
        if (writer.is_full())
            sink(writer.get_buffer());
    }
    writer.end();
    sink(writer.get_buffer());
    return error_code_t();
}

/// A file's second name, `<file>.damaged`, so that it stays when another takes its place. Where files have one
/// name only it is renamed.
class kept_aside_t
{
public:
    explicit kept_aside_t(std::filesystem::path file) : m_file(std::move(file)), m_aside(m_file)
    {
        m_aside += ".damaged";
        std::error_code error;
        std::filesystem::remove(m_aside, error);
        std::filesystem::create_hard_link(m_file, m_aside, error);
        m_is_linked = !error;
        if (error)
            std::filesystem::rename(m_file, m_aside, error);
        if (error)
            m_error = error_code_t::io_error("cannot keep the damaged file aside: " + error.message());
    }
    const error_code_t& error() const { return m_error; }
    void undo() const
    {
        std::error_code stays_aside;
        if (m_is_linked)
            std::filesystem::remove(m_aside, stays_aside);
        else if (!std::filesystem::exists(m_file, stays_aside))
            std::filesystem::rename(m_aside, m_file, stays_aside);
    }

private:
    std::filesystem::path m_file;
    std::filesystem::path m_aside;
    bool m_is_linked;
    error_code_t m_error;
};

} // namespace

error_code_t save_variant_bag(const variant_bag_t& bag, const path_t& file, std::size_t max_bytes)
{
    _internal::atomic_file_t out(file);
    if (out.error().failed())
        return out.error();
    std::size_t bytes = 0;
    const error_code_t result = write_bag(bag, [&](std::string& block) {
        bytes += block.size();
        if (bytes <= max_bytes)
            out.append(block);
        block.clear();
    });
    if (result.failed())
        return result;
    if (bytes > max_bytes)
        return error_code_t::invalid_parameter("the bag is larger than a file that is loaded may be");
    return out.commit();
}

error_code_t save_over_damaged_file(const variant_bag_t& bag, const path_t& file)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(file.as_filesystem_path(), error);
    const bool is_there = !error && std::filesystem::is_regular_file(target, error);
    if (error && error != std::errc::no_such_file_or_directory)
        return error_code_t::io_error("cannot keep the damaged file aside: " + error.message());
    if (!is_there)
        return save_variant_bag(bag, file);
    const kept_aside_t aside(target);
    if (aside.error().failed())
        return aside.error();
    const bool is_later = file_transaction_t::when_ended([aside](bool committed) {
        if (!committed)
            aside.undo();
    });
    const error_code_t result = save_variant_bag(bag, file);
    if (result.failed() && !is_later)
        aside.undo();
    return result;
}

error_code_t save_to_string(const variant_bag_t& bag, std::string& text)
{
    std::string all;
    error_code_t result = write_bag(bag, [&all](std::string& block) {
        all += block;
        block.clear();
    });
    if (result.succeeded())
        text.swap(all);
    return result;
}

error_code_t load_variant_bag(const path_t& file, variant_bag_t& bag, std::size_t max_bytes)
{
    _internal::input_file_t in(file, max_bytes);
    _internal::bag_builder_t builder;
    _internal::bag_reader_t reader(builder);
    std::vector<char> buffer(_internal::bag_writer_t::block);
    while (const std::size_t got = in.read(buffer.data(), buffer.size()))
        if (!reader.read({buffer.data(), got}))
            break;
    if (in.error().failed())
        return in.error();
    const error_code_t result = reader.finish();
    if (result.succeeded())
        bag = builder.take();
    return result;
}

error_code_t load_from_string(std::string_view text, variant_bag_t& bag)
{
    constexpr std::size_t block = _internal::bag_writer_t::block;
    _internal::bag_builder_t builder;
    _internal::bag_reader_t reader(builder);
    while (!text.empty() && reader.read(text.substr(0, block)))
        text.remove_prefix(std::min(text.size(), block));
    const error_code_t result = reader.finish();
    if (result.succeeded())
        bag = builder.take();
    return result;
}

} // namespace gen_helpers2
