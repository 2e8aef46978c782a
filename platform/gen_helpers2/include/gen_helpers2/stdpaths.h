#pragma once

#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"

namespace gen_helpers2 {

/// The user's and the system's usual folders. None of them is created. GLib reads the environment behind the
/// first three and the home folder once and remembers: a variable changed later in the process has no effect.
namespace stdpaths {

GEN_HELPERS2_EXPORT path_t get_user_config_dir();
GEN_HELPERS2_EXPORT path_t get_user_data_dir();
/// Where temporary files are kept: what TMPDIR names, or "/tmp".
GEN_HELPERS2_EXPORT path_t get_temp_dir();
GEN_HELPERS2_EXPORT path_t get_home_dir();
/// The folder that relative paths start from. Empty if it is gone.
GEN_HELPERS2_EXPORT path_t get_working_dir();
/// The folder of the running program, links resolved. Empty if the system does not tell.
GEN_HELPERS2_EXPORT path_t get_executable_dir();

} // namespace stdpaths
} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
