#include "result_saving/folder_watch.h"

#include "support.h"

#include <atomic>
#include <future>
#include <string>
#include <vector>

using commondlg3::folder_answer_t;
using commondlg3::folder_watch_t;

// Of a folder that hangs the page must know which one it is, must not leave a thread behind for each letter
// that is typed, and must still see every other folder.
TEST(FolderWatch, PlaceThatHangsIsNamedOnceAndHindersNoOther)
{
    std::promise<void> released;
    std::atomic<int> looks{0};
    const auto look = [&looks, wait = std::shared_future<void>(released.get_future())](const auto& question,
                                                                                       const auto& at) {
        ++looks;
        at("/hanging");
        if (question.folder.rfind("/hanging", 0) == 0)
            wait.wait();
        folder_answer_t answer;
        answer.question = question;
        return answer;
    };
    std::vector<std::string> told;
    folder_watch_t watch({[&](const folder_answer_t& answer) { told.push_back(answer.question.folder); },
                          [&] { told.emplace_back("waiting"); },
                          [&](const std::string& place) { told.push_back("no " + place); }},
                         look);
    const auto ask = [&](const std::string& folder) {
        told.clear();
        commondlg3::folder_question_t question;
        question.folder = folder;
        watch.ask(question);
    };
    const auto comes = [&](const std::string& last) {
        return test::wait_for([&] { return !told.empty() && told.back() == last; });
    };
    const std::string no_answer = "no /hanging";
    ask("/hanging");
    EXPECT_EQ("waiting", told.back());
    EXPECT_TRUE(comes(no_answer));
    for (int i = 0; i < 50; ++i) {
        ask("/hanging/" + std::string(i, 'x'));
        EXPECT_EQ(no_answer, told.back()) << "known at once";
    }
    EXPECT_EQ(1, looks);
    ask("/other");
    EXPECT_TRUE(comes("/other"));
    ask("/hanging/b");
    released.set_value();
    EXPECT_TRUE(comes("/hanging/b")) << "asked again when it is there again";
    EXPECT_EQ(3, looks);
}
