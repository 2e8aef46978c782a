#include "commondlg3/path_info.h"

#include <boost/tokenizer.hpp>

#include <algorithm>

namespace commondlg3 {

using gen_helpers2::path_t;

path_info_t::path_info_t() = default;
path_info_t::~path_info_t() = default;

path_info_t::path_info_t(const path_t& path) : m_path(path) {}

path_info_t::path_info_t(const std::string& text)
{
    set_path(text);
}

void path_info_t::set_path(const std::string& text)
{
    m_path = path_t(text);
    m_text = m_path.is_empty() ? text : std::string();
}

std::string path_info_t::as_string() const
{
    return m_path.is_empty() ? m_text : m_path.as_string(false);
}

path_t path_info_t::extract_path() const
{
    if (!m_path.is_empty())
        return m_path;
    const boost::char_separator<char> asterisk("*");
    for (const std::string& piece : boost::tokenizer<boost::char_separator<char>>(m_text, asterisk)) {
        const path_t path(piece);
        if (path.is_absolute())
            return path;
    }
    return path_t();
}

bool path_info_t::is_ok() const
{
    return !extract_path().is_empty();
}

bool path_info_t::is_file() const
{
    const path_t path = extract_path();
    return !path.is_empty() && !path.is_directory();
}

bool path_info_t::is_directory() const
{
    return extract_path().is_directory();
}

bool path_info_t::is_exists() const
{
    return extract_path().exists();
}

std::string path_info_t::get_extension() const
{
    return extract_path().get_ext(false);
}

bool path_info_t::check_extension(const std::vector<std::string>& extensions) const
{
    return std::find(extensions.begin(), extensions.end(), get_extension()) != extensions.end();
}

} // namespace commondlg3
