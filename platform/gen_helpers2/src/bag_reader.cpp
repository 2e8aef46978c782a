#include "bag_reader.h"
#include "gen_helpers2/strings.h"
#include "gen_helpers2/variant_bag_file.h"

#include <expat.h>

#include <charconv>
#include <exception>
#include <iterator>
#include <new>
#include <system_error>

namespace gen_helpers2 {
namespace _internal {

namespace {

constexpr char out_of_memory[] = "out of memory";
constexpr const char* type_names[] = {"empty", "bool", "int", "int64", "double", "string"};

bool type_from_name(std::string_view name, variant_type_t& type) noexcept
{
    for (std::size_t i = 0; i < std::size(type_names); ++i) {
        if (name == type_names[i]) {
            type = static_cast<variant_type_t>(i);
            return true;
        }
    }
    return false;
}

template <class T>
bool number_from_text(std::string_view text, variant_t& value)
{
    T number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    value = variant_t(number);
    return true;
}

} // namespace

const char* type_name(variant_type_t type) noexcept
{
    return type_names[static_cast<std::size_t>(type)];
}

// Expat is C: no exception may pass through it.
struct bag_reader_t::callbacks_t
{
    template <class F>
    static void guarded(void* data, F&& action) noexcept
    {
        auto* const reader = static_cast<bag_reader_t*>(data);
        try {
            // Stopping lets some calls through that were already due.
            if (reader->m_failure.empty())
                action(*reader);
        } catch (const std::bad_alloc&) {
            reader->m_failure = out_of_memory;
            XML_StopParser(reader->m_parser, XML_FALSE);
        } catch (const std::exception& exception) {
            reader->m_failure = std::string("not taken: ") + exception.what();
            XML_StopParser(reader->m_parser, XML_FALSE);
        }
    }

    static void XMLCALL start(void* data, const XML_Char* element, const XML_Char** attributes)
    {
        guarded(data, [&](bag_reader_t& r) { r.start_element(element, attributes); });
    }
    static void XMLCALL end(void* data, const XML_Char*)
    {
        guarded(data, [](bag_reader_t& r) { r.end_element(); });
    }
    static void XMLCALL characters(void* data, const XML_Char* text, int length)
    {
        guarded(data, [&](bag_reader_t& r) { r.characters({text, static_cast<std::size_t>(length)}); });
    }
    static void XMLCALL doctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int)
    {
        guarded(data, [](bag_reader_t& r) { r.fail("a document type is not allowed"); });
    }
};

bag_reader_t::bag_reader_t(bag_handler_t& handler) : m_parser(XML_ParserCreate("UTF-8")), m_handler(handler)
{
    if (!m_parser)
        throw std::bad_alloc();
    XML_SetUserData(m_parser, this);
    XML_SetElementHandler(m_parser, &callbacks_t::start, &callbacks_t::end);
    XML_SetCharacterDataHandler(m_parser, &callbacks_t::characters);
    // Entities can only be declared in a document type.
    XML_SetStartDoctypeDeclHandler(m_parser, &callbacks_t::doctype);
}

bag_reader_t::~bag_reader_t()
{
    XML_ParserFree(m_parser);
}

void bag_reader_t::fail(const char* reason)
{
    if (!m_failure.empty())
        return;
    m_failure = "line " + std::to_string(XML_GetCurrentLineNumber(m_parser)) + ": " + reason;
    XML_StopParser(m_parser, XML_FALSE);
}

bool bag_reader_t::parse(std::string_view block, bool last)
{
    if (!m_failure.empty())
        return false;
    if (XML_Parse(m_parser, block.data(), static_cast<int>(block.size()), last) != XML_STATUS_OK &&
        m_failure.empty()) {
        if (XML_GetErrorCode(m_parser) == XML_ERROR_NO_MEMORY)
            m_failure = out_of_memory;
        else
            fail(XML_ErrorString(XML_GetErrorCode(m_parser)));
    }
    return m_failure.empty();
}

bool bag_reader_t::read(std::string_view block)
{
    return parse(block, false);
}

error_code_t bag_reader_t::finish()
{
    if (parse(std::string_view("", 0), true))
        return error_code_t();
    // What there was no room for may be all right.
    return m_failure == out_of_memory ? error_code_t::io_error(m_failure) : error_code_t::damaged(m_failure);
}

/// Takes the one attribute that an element has.
bool bag_reader_t::take_attribute(const char** attributes, std::string_view name, std::string_view& value)
{
    if (!attributes[0] || attributes[2] || name != attributes[0]) {
        fail("missing or unknown attribute");
        return false;
    }
    value = attributes[1];
    return true;
}

bool bag_reader_t::take_name(const char** attributes, std::string& name)
{
    std::string_view escaped;
    if (!take_attribute(attributes, "name", escaped))
        return false;
    if (escaped.find('\\') == std::string_view::npos) {
        name = escaped;
        return true;
    }
    if (!unescape_bytes(escaped, name)) {
        fail("wrong escape in a name");
        return false;
    }
    return true;
}

void bag_reader_t::start_element(std::string_view element, const char** attributes)
{
    if (m_in_value) {
        fail("a value holds text only");
    } else if (!m_had_root) {
        std::string_view version;
        if (element != "bag")
            fail("this is no bag");
        else if (take_attribute(attributes, "version", version) && version != "1")
            fail("unknown version");
        m_had_root = true;
        m_depth = 1;
    } else if (type_from_name(element, m_value_type)) {
        m_in_value = take_name(attributes, m_value_name);
        m_value_text.clear();
    } else if (element == "child") {
        start_child(attributes);
    } else {
        fail("unknown element");
    }
}

void bag_reader_t::start_child(const char** attributes)
{
    std::string name;
    if (!take_name(attributes, name))
        return;
    if (m_depth > max_bag_nesting) {
        fail("nested too deeply");
        return;
    }
    ++m_depth;
    m_handler.begin_child(name);
}

void bag_reader_t::characters(std::string_view text)
{
    if (m_in_value)
        m_value_text += text;
    else if (text.find_first_not_of(" \t\r\n") != std::string_view::npos)
        fail("text outside of a value");
}

bool bag_reader_t::value_from_text(variant_t& value)
{
    switch (m_value_type) {
    case variant_type_t::empty:
        return m_value_text.empty();
    case variant_type_t::boolean:
        value = variant_t(m_value_text == "true");
        return m_value_text == "true" || m_value_text == "false";
    case variant_type_t::integer:
        return number_from_text<int>(m_value_text, value);
    case variant_type_t::integer64:
        return number_from_text<long long>(m_value_text, value);
    case variant_type_t::real:
        return number_from_text<double>(m_value_text, value);
    case variant_type_t::text:
        break;
    }
    if (m_value_text.find('\\') != std::string::npos && !unescape_bytes(m_value_text, m_value_text))
        return false;
    value = variant_t(m_value_text);
    return true;
}

void bag_reader_t::end_element()
{
    if (!m_in_value) {
        if (--m_depth > 0)
            m_handler.end_child();
        return;
    }
    m_in_value = false;
    variant_t value;
    if (value_from_text(value))
        m_handler.value(m_value_name, std::move(value));
    else
        fail("a text that is no value of its type");
}

} // namespace _internal
} // namespace gen_helpers2
