#include "gen_helpers2/environment.h"
#include "gen_helpers2/stdpaths.h"

#include <glib.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace gen_helpers2 {

bool get_environ_value(const std::string& name, std::string& value)
{
    if (name.empty() || name.find('=') != std::string::npos || name.find('\0') != std::string::npos)
        return false;
    const char* found = std::getenv(name.c_str());
    if (!found)
        return false;
    value = found;
    return true;
}

std::string get_environ_value(const std::string& name)
{
    std::string value;
    get_environ_value(name, value);
    return value;
}

namespace stdpaths {

path_t get_user_config_dir()
{
    return path_t(g_get_user_config_dir());
}
path_t get_user_data_dir()
{
    return path_t(g_get_user_data_dir());
}
path_t get_temp_dir()
{
    return path_t(g_get_tmp_dir());
}
path_t get_home_dir()
{
    return path_t(g_get_home_dir());
}

path_t get_working_dir()
{
    std::error_code error;
    const std::filesystem::path directory = std::filesystem::current_path(error);
    return error ? path_t() : path_t(directory);
}

path_t get_executable_dir()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? path_t() : path_t(program).parent();
}

} // namespace stdpaths
} // namespace gen_helpers2
