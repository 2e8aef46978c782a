#include "folder_look.h"

#include "commondlg3/path_validation.h"

#include <gen_helpers2/stdpaths.h>
#include <rdmgr2/result_directory_manager.h>

#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::path_t;

// Whether it is there. Whoever hangs in a network does so at its first name.
bool walk_down(const path_t& folder, const std::function<void(const std::string&)>& at)
{
    std::vector<path_t> places;
    for (path_t place = folder; place.is_absolute() && !place.is_empty(); place = place.parent())
        places.push_back(place);
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        at(place->as_string());
        if (!place->exists())
            return false;
    }
    return !places.empty();
}

} // namespace

folder_answer_t look_at_folder(const folder_question_t& question,
                               const std::function<void(const std::string& place)>& at)
{
    folder_answer_t answer;
    answer.question = question;
    path_t used(question.folder);
    if (question.trouble.empty() && !question.wrong) {
        answer.is_there = walk_down(used, at);
        at(question.folder);
        if (question.is_checked)
            answer.question.wrong = check_path(used, false);
        if (!answer.question.wrong)
            answer.state = gen_helpers2::examine_folder(used);
    }
    if (question.is_checked && (answer.question.wrong || !question.trouble.empty())) {
        used = gen_helpers2::stdpaths::get_temp_dir();
        answer.is_there = walk_down(used, at);
        at(used.as_string());
    }
    answer.used = used.as_string();
    answer.free_space = gen_helpers2::get_free_space(used);
    answer.next_name =
        rdmgr2::ResultDirectoryManager::getNextResultDirectoryName(question.name_template, used);
    return answer;
}

} // namespace commondlg3
