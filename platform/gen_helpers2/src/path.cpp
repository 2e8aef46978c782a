#include "gen_helpers2/path.h"

#include <algorithm>
#include <climits>
#include <system_error>
#include <vector>

namespace gen_helpers2 {

namespace {

std::string normalised(std::string_view text)
{
    if (text.empty() || text.find('*') != std::string_view::npos || text.find('\0') != std::string_view::npos)
        return std::string();
    const bool absolute = text.front() == '/';
    std::vector<std::string_view> names;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('/'), text.size());
        const std::string_view name = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (name.empty() || name == ".")
            continue;
        if (name != "..")
            names.push_back(name);
        else if (!names.empty() && names.back() != "..")
            names.pop_back();
        else if (!absolute)
            names.push_back(name);
    }
    std::string out(absolute ? "/" : "");
    for (const std::string_view name : names) {
        if (!out.empty() && out.back() != '/')
            out += '/';
        out += name;
    }
    return out.empty() ? std::string(".") : out;
}

} // namespace

path_t::path_t(std::string_view bytes) : m_path(normalised(bytes)) {}

bool path_t::is_absolute() const noexcept
{
    return !is_empty() && as_string().front() == '/';
}

path_t path_t::parent() const
{
    const std::string& text = as_string();
    if (text == "." || text == ".." || (text.size() >= 3 && text.compare(text.size() - 3, 3, "/..") == 0))
        return path_t(text + "/..");
    const std::size_t slash = text.rfind('/');
    if (slash == std::string::npos || text == "/")
        return path_t();
    return path_t(std::string_view(text).substr(0, slash == 0 ? 1 : slash));
}

std::string path_t::file_name() const
{
    const std::string& text = as_string();
    const std::size_t slash = text.rfind('/');
    std::string name = slash == std::string::npos ? text : text.substr(slash + 1);
    return name == "." || name == ".." ? std::string() : name;
}

path_t path_t::operator/(const path_t& rest) const
{
    if (is_empty() || rest.is_empty())
        return path_t();
    if (rest.is_absolute())
        return rest;
    return path_t(as_string() + "/" + rest.as_string());
}

bool path_t::exists() const noexcept
{
    std::error_code error;
    return !is_empty() && std::filesystem::exists(m_path, error);
}

bool path_t::is_directory() const noexcept
{
    std::error_code error;
    return !is_empty() && std::filesystem::is_directory(m_path, error);
}

bool path_t::is_file() const noexcept
{
    std::error_code error;
    return !is_empty() && std::filesystem::is_regular_file(m_path, error);
}

bool path_t::is_missing() const noexcept
{
    std::error_code error;
    return is_empty() ||
           std::filesystem::status(m_path, error).type() == std::filesystem::file_type::not_found;
}

std::string path_t::as_string(bool with_separator_at_end) const
{
    const std::string& text = as_string();
    return with_separator_at_end && !text.empty() && text.back() != '/' ? text + "/" : text;
}

path_t& path_t::append(const path_t& rest)
{
    return *this = *this / rest;
}

std::string path_t::get_ext(bool with_dot) const
{
    const std::string name = file_name();
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return std::string();
    return name.substr(with_dot ? dot : dot + 1);
}

bool path_t::exists(const std::string& text) noexcept
{
    return path_t(text).exists();
}

bool path_t::is_directory(const std::string& text) noexcept
{
    return path_t(text).is_directory();
}

bool path_t::validate(std::string_view text, bool with_folders, int& error_position)
{
    const auto refuse = [&](std::size_t position) {
        error_position = static_cast<int>(std::min<std::size_t>(position, INT_MAX));
        return false;
    };
    if (text.empty())
        return refuse(0);
    std::size_t name_start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '*' || c == '\0' || (c == '/' && !with_folders) || i >= max_path_bytes)
            return refuse(i);
        if (c == '/')
            name_start = i + 1;
        else if (i - name_start >= max_name_bytes)
            return refuse(i);
    }
    return true;
}

} // namespace gen_helpers2
