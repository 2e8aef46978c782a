#include "paths/disk_question.h"

#include "support.h"

#include <wx/thread.h>

#include <chrono>
#include <future>
#include <memory>

using commondlg3::ask_disk;

// Folders of a network that hang: nobody waits for them, and those that answer are still asked.
TEST(DiskQuestion, AnswersInTimeOrLaterOrNever)
{
    constexpr std::chrono::milliseconds at_once{0}, long_enough{20000};
    const auto of_a_window = std::make_shared<int>();
    EXPECT_TRUE(ask_disk([] {}, long_enough, [of_a_window] {}));
    EXPECT_EQ(1, of_a_window.use_count()) << "what is not needed ends here, not with the thread";

    std::promise<void> released;
    const std::shared_future<void> wait(released.get_future());
    int later = 0;
    int begun = 0;
    const auto count_later = [&] {
        EXPECT_TRUE(wxThread::IsMain());
        ++later;
    };
    // Until no more may hang.
    while (begun < 100 && ask_disk([] {}, long_enough)) {
        EXPECT_FALSE(ask_disk([wait] { wait.wait(); }, at_once, count_later));
        ++begun;
    }
    EXPECT_GE(begun, 4);
    EXPECT_LT(begun, 100);
    EXPECT_FALSE(ask_disk([] { ADD_FAILURE() << "one more thread"; }, at_once, [] { ADD_FAILURE(); }));
    test::settle();
    EXPECT_EQ(0, later);
    released.set_value();
    EXPECT_TRUE(test::wait_for([&] { return later == begun; }));
    EXPECT_TRUE(test::wait_for([&] { return ask_disk([] {}, long_enough); }));
}
