#pragma once

#include "gen_helpers2/variant.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace gen_helpers2 {
namespace _internal {

/// The text of a bag's file, item by item, in a buffer that its owner empties.
class bag_writer_t
{
public:
    bag_writer_t();

    void value(std::string_view name, const variant_t& value);
    void text(std::string_view name, std::string_view text);
    /// False when it would be nested too deeply for a file.
    bool begin_child(std::string_view name);
    void end_child();
    void end();

    std::size_t get_depth() const noexcept { return m_depth; }
    std::string& get_buffer() noexcept { return m_out; }
    /// Whether the buffer holds enough to be written.
    bool is_full() const noexcept { return m_out.size() >= block; }

    static constexpr std::size_t block = std::size_t(1) << 16;

private:
    void begin_element(const char* element, std::string_view name);
    void end_element(const char* element);

    std::string m_out;
    std::size_t m_depth = 0;
};

} // namespace _internal
} // namespace gen_helpers2
