#pragma once

#include "gen_helpers2/bag_stream.h"
#include "gen_helpers2/error_code.h"
#include "gen_helpers2/variant_bag.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct XML_ParserStruct;

namespace gen_helpers2 {
namespace _internal {

/// The element of a type in a file.
const char* type_name(variant_type_t type) noexcept;

/// Puts a bag together from its items.
class bag_builder_t final : public bag_handler_t
{
public:
    bag_builder_t() { m_open.push_back(&m_root); }
    ~bag_builder_t() override = default;

    void begin_child(std::string_view name) override { m_open.push_back(&m_open.back()->add_child(name)); }
    void value(std::string_view name, variant_t value) override
    {
        m_open.back()->add_value(name, std::move(value));
    }
    void end_child() override
    {
        // Many records with few items each: the slack of growing lists would be a good part of a large bag.
        m_open.back()->shrink_to_fit();
        m_open.pop_back();
    }
    variant_bag_t take() { return std::move(m_root); }

private:
    variant_bag_t m_root;
    std::vector<variant_bag_t*> m_open; // outermost first
};

/// Reads the text of a bag's file, given in blocks.
class bag_reader_t
{
public:
    explicit bag_reader_t(bag_handler_t& handler);
    ~bag_reader_t();
    bag_reader_t(const bag_reader_t&) = delete;
    bag_reader_t& operator=(const bag_reader_t&) = delete;

    /// False after an error: what follows need not be read any more.
    bool read(std::string_view block);

    /// Ends the text: whether all of it was good.
    error_code_t finish();

private:
    struct callbacks_t;
    friend struct callbacks_t;

    void start_element(std::string_view element, const char** attributes);
    void end_element();
    void characters(std::string_view text);
    void start_child(const char** attributes);
    bool take_attribute(const char** attributes, std::string_view name, std::string_view& value);
    bool take_name(const char** attributes, std::string& name);
    bool value_from_text(variant_t& value);
    void fail(const char* reason);
    bool parse(std::string_view block, bool last);

    XML_ParserStruct* m_parser;
    bag_handler_t& m_handler;
    std::size_t m_depth = 0; // of bags that are open
    bool m_had_root = false;
    bool m_in_value = false;
    variant_type_t m_value_type = variant_type_t::empty;
    std::string m_value_name;
    std::string m_value_text;
    std::string m_failure;
};

} // namespace _internal
} // namespace gen_helpers2
