// The formats in which a log is saved as a text.
#include "text_writer.h"

#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>
#include <gen_helpers2/strings.h>
#include <msngr2/messenger.h>
#include <vdx/message_element.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace commondlg3 {
namespace {

enum class rank_t
{
    critical,
    error,
    warning,
    debug,
    information
};

rank_t rank_of(std::uint32_t severity)
{
    return severity & msngr2::sev_critical  ? rank_t::critical
           : severity & msngr2::sev_error   ? rank_t::error
           : severity & msngr2::sev_warning ? rank_t::warning
           : severity & msngr2::sev_debug   ? rank_t::debug
                                            : rank_t::information;
}

constexpr const char* rank_names[] = {"critical", "error", "warning", "debug", "information"};

const char* name_of(std::uint32_t severity)
{
    return rank_names[static_cast<std::size_t>(rank_of(severity))];
}

// Copies a text with some of its ASCII characters replaced, in stretches as long as there are none.
using replacements_t = std::array<const char*, 128>;

void append_replaced(std::string& out, std::string_view text, const replacements_t& replacements)
{
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 128 || !replacements[byte])
            continue;
        out.append(text, begin, at - begin);
        out += replacements[byte];
        begin = at + 1;
    }
    out.append(text, begin, text.size() - begin);
}

class plain_format_t final : public log_format_t
{
public:
    void begin_entry(std::string& out, const entry_t& entry) override
    {
        if (m_any)
            out += '\n';
        m_any = true;
        for (const std::string_view text : {entry.caption, std::string_view(entry.message)})
            if (!text.empty()) {
                out += text;
                out += '\n';
            }
    }

    void add(std::string& out, const line_t& line) override
    {
        for (std::uint64_t said = 0; said < line.count; ++said) {
            if (!line.time.empty()) {
                out += line.time;
                out += ' ';
            }
            out += line.text;
            out += '\n';
        }
    }

private:
    bool m_any = false;
};

const replacements_t& html_replacements()
{
    static const replacements_t all = [] {
        replacements_t made{};
        for (std::size_t control = 0; control < 32; ++control)
            made[control] = "\ufffd";
        made['\t'] = made['\n'] = nullptr;
        made['\r'] = "\n";
        made[127] = "\ufffd";
        made['<'] = "&lt;";
        made['>'] = "&gt;";
        made['&'] = "&amp;";
        made['"'] = "&quot;";
        return made;
    }();
    return all;
}

// Each ink on its ground has a contrast of 5 and more.
constexpr char style[] = R"(
:root { color-scheme: light dark; }
body { margin: 1.5em; font: 15px/1.45 sans-serif; background: #ffffff; color: #1c1c1c; }
h2 { margin: 1.2em 0 0; font-size: 1.05em; }
p { margin: 0; white-space: pre-wrap; overflow-wrap: anywhere; unicode-bidi: plaintext; }
.message { font-style: italic; margin-bottom: .4em; }
time { color: #595959; }
.critical, .error { color: #a40e0e; }
.warning { color: #7a4a00; }
.debug { color: #595959; }
@media (prefers-color-scheme: dark) {
body { background: #1d1d1d; color: #ececec; }
time, .debug { color: #b4b4b4; }
.critical, .error { color: #ff9d96; }
.warning { color: #f2c066; }
}
)";

class html_format_t final : public log_format_t
{
public:
    void begin(std::string& out) override
    {
        const std::string language = cfgmgr2::get_language();
        out += "<!DOCTYPE html>\n<html lang=\"";
        append(out, language);
        out += cfgmgr2::language_is_right_to_left(language) ? "\" dir=\"rtl\"" : "\" dir=\"ltr\"";
        out += ">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta name=\"viewport\" content=\"width=device-width\">\n<title>";
        append(out, translate_message("inplace_ctrl.name"));
        out += "</title>\n<style>";
        out += style;
        out += "</style>\n</head>\n<body>\n";
        m_error = translate_message("severity.error");
        m_warning = translate_message("severity.warning");
    }

    void begin_entry(std::string& out, const entry_t& entry) override
    {
        out += "<section>\n";
        if (!entry.caption.empty()) {
            out += "<h2 dir=\"auto\">";
            append(out, entry.caption);
            out += "</h2>\n";
        }
        if (!entry.message.empty()) {
            out += "<p class=\"message\">";
            append(out, entry.message);
            out += "</p>\n";
        }
    }

    void add(std::string& out, const line_t& line) override
    {
        const rank_t rank = rank_of(line.severity);
        for (std::uint64_t said = 0; said < line.count; ++said) {
            out += "<p";
            if (rank != rank_t::information) {
                out += " class=\"";
                out += name_of(line.severity);
                out += '"';
            }
            out += '>';
            if (!line.time.empty()) {
                out += "<time>";
                out += line.time;
                out += "</time> ";
            }
            // Colour never stands alone.
            if (rank <= rank_t::warning) {
                out += "<b>";
                append(out, rank == rank_t::warning ? m_warning : m_error);
                out += ":</b> ";
            }
            if (line.text.find('\x1b') == std::string_view::npos)
                append(out, line.text);
            else
                append(out, vdxcfrw7::LineToText(line.text));
            out += "</p>\n";
        }
    }

    void end_entry(std::string& out) override { out += "</section>\n"; }
    void end(std::string& out) override { out += "</body>\n</html>\n"; }

private:
    static void append(std::string& out, std::string_view text)
    {
        if (gen_helpers2::is_valid_utf8(text))
            append_replaced(out, text, html_replacements());
        else
            append_replaced(out, gen_helpers2::replace_invalid_utf8(text), html_replacements());
    }

    std::string m_error;
    std::string m_warning;
};

const replacements_t& json_replacements()
{
    static const replacements_t all = [] {
        static std::array<std::string, 32> codes;
        replacements_t made{};
        for (std::size_t control = 0; control < 32; ++control) {
            codes[control] =
                std::string("\\u00") + (control < 16 ? '0' : '1') + "0123456789abcdef"[control % 16];
            made[control] = codes[control].c_str();
        }
        made['\n'] = "\\n";
        made['\t'] = "\\t";
        made['\r'] = "\\r";
        made['"'] = "\\\"";
        made['\\'] = "\\\\";
        return made;
    }();
    return all;
}

class json_format_t final : public log_format_t
{
public:
    void begin_entry(std::string& out, const entry_t& entry) override
    {
        m_caption = entry.caption;
        m_number = std::to_string(entry.tag);
        m_caption_is_text = gen_helpers2::is_valid_utf8(m_caption);
        m_head.clear();
        append_head(m_head, false);
        const bool escaped = !m_caption_is_text || !gen_helpers2::is_valid_utf8(entry.message);
        append_head(out, escaped);
        append_text(out, ",\"message\":\"", entry.message, escaped);
        end_object(out, escaped);
    }

    void add(std::string& out, const line_t& line) override
    {
        const bool escaped = !m_caption_is_text || !gen_helpers2::is_valid_utf8(line.text);
        if (escaped)
            append_head(out, true);
        else
            out += m_head;
        out += ",\"severity\":\"";
        out += name_of(line.severity);
        out += '"';
        if (!line.time.empty()) {
            out += ",\"time\":\"";
            out += line.time;
            out += '"';
        }
        if (line.count > 1)
            out += ",\"count\":" + std::to_string(line.count);
        append_text(out, ",\"text\":\"", line.text, escaped);
        end_object(out, escaped);
    }

private:
    void append_head(std::string& out, bool escaped) const
    {
        out += "{\"entry\":";
        out += m_number;
        append_text(out, ",\"caption\":\"", m_caption, escaped);
    }

    static void append_text(std::string& out, const char* name, std::string_view text, bool escaped)
    {
        out += name;
        if (escaped)
            append_replaced(out, gen_helpers2::escape_bytes(text), json_replacements());
        else
            append_replaced(out, text, json_replacements());
        out += '"';
    }

    static void end_object(std::string& out, bool escaped)
    {
        out += escaped ? ",\"escaped\":true}\n" : "}\n";
    }

    std::string m_caption;
    std::string m_number;
    std::string m_head; // how each line of the entry begins
    bool m_caption_is_text = true;
};

} // namespace

std::unique_ptr<log_format_t> log_format_t::make(text_format_t format)
{
    switch (format) {
    case text_format_t::html:
        return std::make_unique<html_format_t>();
    case text_format_t::json_lines:
        return std::make_unique<json_format_t>();
    case text_format_t::plain:
        break;
    }
    return std::make_unique<plain_format_t>();
}

} // namespace commondlg3
