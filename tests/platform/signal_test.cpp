#include "gen_helpers2/signal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using gen_helpers2::signal_t;
using gen_helpers2::subscriber_base_t;

class receiver_t : public subscriber_base_t
{
public:
    void on_number(int value) { sum += value; }
    void on_text(const std::string& text) const { last = text; }

    int sum = 0;
    mutable std::string last;
};

TEST(Signal, CopiesShareSlotsAndPassOnToOtherSignals)
{
    signal_t<int> original;
    const signal_t<int> stored = original;
    int sum = 0;
    {
        signal_t<int> callback;
        callback.connect([&sum](int v) { sum += v; });
        original.connect(callback);
        original.connect(original);
        EXPECT_EQ(stored.num_slots(), 1U) << "but not to itself";
    }
    stored.emit(3);
    EXPECT_EQ(sum, 3);
    original.disconnect_all();
    EXPECT_TRUE(stored.empty());
}

TEST(Signal, SubscriptionEndsWithItsOwner)
{
    signal_t<int> number;
    signal_t<const std::string&> text;
    {
        receiver_t receiver;
        number.connect(&receiver, &receiver_t::on_number);
        number.connect(&receiver, [&receiver](int v) { receiver.sum += 100 * v; });
        text.connect(&receiver, &receiver_t::on_text);
        number.emit(2);
        text.emit("hello");
        EXPECT_EQ(receiver.sum, 202);
        EXPECT_EQ(receiver.last, "hello");

        const receiver_t copy(receiver);
        EXPECT_EQ(copy.num_subscriptions(), 0U);
        EXPECT_EQ(number.num_slots(), 2U);
    }
    EXPECT_TRUE(number.empty());
    EXPECT_TRUE(text.empty());
}

TEST(Signal, DeadConnectionsDoNotPileUp)
{
    receiver_t receiver;
    signal_t<int> lasting;
    lasting.connect(&receiver, &receiver_t::on_number);
    for (int i = 0; i < 100; ++i) {
        signal_t<int> passing;
        passing.connect(&receiver, &receiver_t::on_number);
        passing.emit(1);
    }
    EXPECT_EQ(receiver.num_subscriptions(), 1U);
    lasting.emit(1);
    EXPECT_EQ(receiver.sum, 101);
}

TEST(Signal, SlotMayDestroySignalAndSubscriber)
{
    auto signal = std::make_unique<signal_t<int>>();
    auto receiver = std::make_unique<receiver_t>();
    int after = 0;
    std::string held = "a text too long to be kept inside of the string object";
    signal->connect(receiver.get(), [&, held](int) {
        receiver.reset();
        signal.reset();
        after += static_cast<int>(held.size());
    });
    signal->connect([&after](int v) { after += 1000 * v; });
    signal->emit(1);
    EXPECT_EQ(after, 1000 + static_cast<int>(held.size()));
    EXPECT_FALSE(signal);
}

TEST(Signal, SlotDisconnectedDuringEmissionIsNotCalled)
{
    signal_t<> signal;
    int calls = 0;
    auto receiver = std::make_unique<receiver_t>();
    signal.connect([&] { receiver.reset(); });
    signal.connect(receiver.get(), [&] { ++calls; });
    signal.emit();
    EXPECT_EQ(calls, 0);
}

TEST(SignalThreads, ConnectingAndDroppingWhileEmitting)
{
    signal_t<int> signal;
    std::atomic<int> calls{0};
    std::atomic<bool> stop{false};
    signal.connect([&calls](int) { ++calls; });
    std::thread dropper([&] {
        while (!stop) {
            receiver_t receiver;
            for (int i = 0; i < 4; ++i)
                signal.connect(&receiver, [&calls](int v) { calls += v; });
        }
    });
    for (int i = 0; i < 5000; ++i)
        signal.emit(0);
    stop = true;
    dropper.join();
    EXPECT_GE(calls, 5000);
    EXPECT_EQ(signal.num_slots(), 1U);
}

TEST(SignalThreads, OneSubscriberUsedByMany)
{
    receiver_t receiver;
    signal_t<int> signals[4];
    std::vector<std::thread> threads;
    for (auto& signal : signals)
        threads.emplace_back([&receiver, &signal] {
            for (int i = 0; i < 500; ++i) {
                signal.connect(&receiver, [](int) {});
                if (i % 50 == 0)
                    receiver.disconnect_all();
            }
        });
    for (auto& thread : threads)
        thread.join();
    receiver.disconnect_all();
    for (auto& signal : signals)
        EXPECT_TRUE(signal.empty());
}

} // namespace
