#include "gen_helpers2/file.h"
#include "atomic_file.h"
#include "input_file.h"

namespace gen_helpers2 {

error_code_t write_whole_file(const path_t& path, std::string_view bytes)
{
    _internal::atomic_file_t file(path);
    file.append(bytes);
    return file.commit();
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

} // namespace gen_helpers2
