#include "gen_helpers2/variant_bag_file.h"
#include "atomic_file.h"
#include "bag_reader.h"
#include "gen_helpers2/strings.h"
#include "input_file.h"

#include <charconv>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace gen_helpers2 {

namespace {

constexpr std::size_t write_block = std::size_t(1) << 16;

bool is_markup(char c) noexcept
{
    return c == '&' || c == '<' || c == '>' || c == '"';
}

/// Text as it may stand in an element or between double quotes.
void append_text(std::string& out, std::string_view text)
{
    const std::string escaped = escape_bytes(text);
    std::string_view rest(escaped);
    while (!rest.empty()) {
        std::size_t plain = 0;
        while (plain < rest.size() && !is_markup(rest[plain]))
            ++plain;
        out.append(rest.data(), plain);
        if (plain == rest.size())
            return;
        switch (rest[plain]) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += "&quot;";
        }
        rest.remove_prefix(plain + 1);
    }
}

template <class T>
void append_number(std::string& out, T value)
{
    char digits[64];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void append_value(std::string& out, std::string_view name, const variant_t& value)
{
    const char* const element = _internal::type_name(value.type());
    out += '<';
    out += element;
    out += " name=\"";
    append_text(out, name);
    out += "\">";
    switch (value.type()) {
    case variant_type_t::empty:
        break;
    case variant_type_t::boolean:
        out += value.get<bool>() ? "true" : "false";
        break;
    case variant_type_t::integer:
    case variant_type_t::integer64:
        append_number(out, value.get<long long>());
        break;
    case variant_type_t::real:
        append_number(out, value.get<double>());
        break;
    case variant_type_t::text:
        append_text(out, value.text());
        break;
    }
    out += "</";
    out += element;
    out += ">\n";
}

/// Calls sink(std::string&) with every full block, to be emptied, and with the last one.
template <class Sink>
error_code_t write_bag(const variant_bag_t& bag, Sink&& sink)
{
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<bag version=\"1\">\n";
    std::vector<std::pair<variant_bag_t::const_iterator, variant_bag_t::const_iterator>> open;
    open.emplace_back(bag.begin(), bag.end());
    for (;;) {
        auto& [item, end] = open.back();
        if (item == end) {
            open.pop_back();
            if (open.empty())
                break;
            out += "</child>\n";
            continue;
        }
        const variant_bag_t::item_t& current = *item++;
        if (current.is_value()) {
            append_value(out, current.name(), current.value());
        } else {
            if (open.size() > max_bag_nesting)
                return error_code_t::invalid_parameter("the bag is nested too deeply for a file");
            out += "<child name=\"";
            append_text(out, current.name());
            out += "\">\n";
            open.emplace_back(current.child()->begin(), current.child()->end());
        }
        if (out.size() >= write_block)
            sink(out);
    }
    out += "</bag>\n";
    sink(out);
    return error_code_t();
}

} // namespace

error_code_t save_variant_bag(const variant_bag_t& bag, const path_t& file)
{
    _internal::atomic_file_t out(file);
    if (out.error().failed())
        return out.error();
    const error_code_t result = write_bag(bag, [&out](std::string& block) {
        out.append(block);
        block.clear();
    });
    return result.failed() ? result : out.commit();
}

error_code_t save_over_damaged_file(const variant_bag_t& bag, const path_t& file)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(file.as_filesystem_path(), error);
    if (error || !std::filesystem::is_regular_file(target, error))
        return save_variant_bag(bag, file);
    std::filesystem::path aside = target;
    aside += ".damaged";
    std::filesystem::rename(target, aside, error);
    if (error)
        return error_code_t::io_error("cannot keep the damaged file aside: " + error.message());
    const error_code_t result = save_variant_bag(bag, file);
    if (result.failed())
        std::filesystem::rename(aside, target, error);
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
    _internal::bag_reader_t reader;
    std::vector<char> buffer(write_block);
    while (const std::size_t got = in.read(buffer.data(), buffer.size()))
        if (!reader.read({buffer.data(), got}))
            break;
    if (in.error().failed())
        return in.error();
    return reader.finish(bag);
}

error_code_t load_from_string(std::string_view text, variant_bag_t& bag)
{
    _internal::bag_reader_t reader;
    while (!text.empty() && reader.read(text.substr(0, write_block)))
        text.remove_prefix(std::min(text.size(), write_block));
    return reader.finish(bag);
}

} // namespace gen_helpers2
