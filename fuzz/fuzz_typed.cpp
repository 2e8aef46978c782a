// What is typed, pasted or kept about names, paths and editors: filters leave nothing that they are to
// filter, and what was taken is the same when it is given again.
#include "check.h"

#include <commondlg3/editor_data.h>
#include <commondlg3/name_chars.h>
#include <commondlg3/path_info.h>
#include <commondlg3/result_saving_pp.h>
#include <commondlg3/search_dirs_data.h>
#include <gen_helpers2/strings.h>
#include <gen_helpers2/variant_bag_file.h>
#include <rdmgr2/result_directory_manager.h>

#include <cstddef>
#include <cstdint>
#include <string>

using namespace commondlg3;

namespace {

void try_names(const std::string& text)
{
    std::string file = text;
    std::string folder = text;
    check(replace_disabled_chars(file, disabled_file_chars) == (file.size() != text.size()));
    replace_disabled_chars_in_folder(folder);
    check(check_string_for_disabled_symbols(file, disabled_file_chars));
    check(check_string_for_disabled_symbols(folder, disabled_folder_chars));

    std::string name_template = text;
    result_saving_pp_t::filter_result_template(name_template);
    check(!rdmgr2::ResultDirectoryManager::validateResultDirectoryPattern(name_template));
    check(!result_saving_pp_t::filter_result_template(name_template));
    check(!rdmgr2::ResultDirectoryManager::fillResultDirectoryPattern(name_template, 12345).empty());
}

void try_paths(const std::string& text)
{
    const path_info_t path(text);
    const path_info_t again(path.as_string());
    check(again.as_string() == path.as_string() && again.is_ok() == path.is_ok());
    const std::string typed = typed_dir(text);
    // Blanks that a path in another form has at its ends belong to a name, until it is typed anew.
    if (gen_helpers2::trim(typed) == typed)
        check(typed_dir(typed) == typed);
    for (const std::string& dir : split_dirs(text))
        check(!dir.empty());
}

void try_editors(const std::string& text)
{
    gen_helpers2::variant_bag_t bag;
    if (gen_helpers2::load_from_string(text, bag).failed())
        return;
    editor_data_t first;
    first.load(bag);
    gen_helpers2::variant_bag_t saved;
    first.save(saved);
    editor_data_t second;
    second.load(saved);
    gen_helpers2::variant_bag_t saved_again;
    second.save(saved_again);
    check(saved == saved_again);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    try_names(text);
    try_paths(text);
    try_editors(text);
    return 0;
}
