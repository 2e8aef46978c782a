#include "gen_helpers2/file.h"
#include "atomic_file.h"
#include "input_file.h"

#include <sys/stat.h>

#include <memory>

namespace gen_helpers2 {

error_code_t write_whole_file(const path_t& path, std::string_view bytes)
{
    _internal::atomic_file_t file(path);
    file.append(bytes);
    return file.commit();
}

struct whole_file_writer_t::impl_t
{
    explicit impl_t(const path_t& path) : file(path) {}
    _internal::atomic_file_t file;
};

whole_file_writer_t::whole_file_writer_t(const path_t& path) : m_impl(std::make_unique<impl_t>(path)) {}

whole_file_writer_t::~whole_file_writer_t() = default;

void whole_file_writer_t::append(std::string_view bytes)
{
    m_impl->file.append(bytes);
}

const error_code_t& whole_file_writer_t::error() const noexcept
{
    return m_impl->file.error();
}

error_code_t whole_file_writer_t::commit()
{
    return m_impl->file.commit();
}

error_code_t read_whole_file(const path_t& path, std::string& out, std::size_t max_bytes)
{
    _internal::input_file_t file(path, max_bytes);
    std::string bytes;
    bytes.reserve(file.expected_size());
    char buffer[1 << 14];
    while (const std::size_t got = file.read(buffer, sizeof buffer))
        bytes.append(buffer, got);
    if (file.error().succeeded())
        out.swap(bytes);
    return file.error();
}

void make_private_folder(const path_t& folder)
{
    if (folder.file_name().empty() || folder.exists())
        return;
    make_private_folder(folder.parent());
    constexpr mode_t for_the_owner = 0700;
    ::mkdir(folder.as_string().c_str(), for_the_owner);
}

} // namespace gen_helpers2
