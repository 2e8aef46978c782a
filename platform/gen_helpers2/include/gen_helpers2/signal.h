#pragma once

#include "gen_helpers2/export.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace gen_helpers2 {
namespace _internal {

/// One slot's place in the list of a signal. Copies stand for the same slot; it does not end with them.
/// Safe in any thread.
class GEN_HELPERS2_EXPORT connection
{
public:
    connection() = default;

    bool connected() const;
    /// The slot is not called any more, also not by an emission that goes on.
    void disconnect() const;

private:
    friend class slot_list_t;
    struct impl_t;
    std::shared_ptr<impl_t> m_impl;
};

/// What a signal is whatever its arguments: compiled once, not in each file that raises or hears one.
/// Copies share their slots.
class GEN_HELPERS2_EXPORT slot_list_t
{
public:
    using slot_t = std::function<void(void* arguments)>;

    slot_list_t();

    connection connect(slot_t slot);
    void emit(void* arguments) const;
    bool is_same(const slot_list_t& other) const { return m_impl == other.m_impl; }
    std::size_t num_slots() const;
    void disconnect_all();

private:
    struct impl_t;
    std::shared_ptr<impl_t> m_impl;
};

/// Base of everything that receives signals through its own methods: it ends its subscriptions with its
/// life.
///
/// A subscription is kept as a connection by its owner. The owner may be destroyed at any time, also from
/// within one of its own slots, and from another thread than the one that emits. What destruction does not
/// do is wait: a slot that another thread has already entered runs to its end, so data shared between
/// threads must outlive that call by other means.
///
/// Copying a subscriber copies no subscription: the copy has not asked for any.
class GEN_HELPERS2_EXPORT subscriber_base_t
{
public:
    /// Ends all subscriptions of this object. Safe in any thread.
    void disconnect_all();

    /// Number of subscriptions still alive.
    std::size_t num_subscriptions() const;

    /// For signals: keeps the connection until this object ends.
    void keep_connection(const connection& c);

protected:
    subscriber_base_t();
    subscriber_base_t(const subscriber_base_t&);
    subscriber_base_t& operator=(const subscriber_base_t&);
    virtual ~subscriber_base_t();

private:
    mutable std::mutex m_mutex;
    std::vector<connection> m_connections;
    std::size_t m_next_sweep = 8;
};

/// A list of slots called one after the other, in the order in which they were connected.
///
/// Use it for notifications ("the value changed") and for callbacks handed over as `const signal_t<...>&`.
/// Do not use it to ask for an answer: slots return nothing.
///
/// A copy shares the slot list with its original: what is connected to one is called by the other. That is
/// what lets a callback be stored or passed by value.
///
///     class window_t : public gen_helpers2::subscriber_base_t {
///         void on_changed(int value);
///         window_t(model_t& model) { model.changed.connect(this, &window_t::on_changed); }
///     };
///
///     gen_helpers2::signal_t<int> changed;
///     changed.connect([](int value) { ... });
///     changed.emit(5);
///
/// Thread: connecting, disconnecting and emitting are safe in any thread; slots run in the thread that
/// emits. A slot may destroy the signal, or its own subscriber, or connect and disconnect others. A slot
/// that was disconnected during an emission is not called any more by it. Errors: a slot that throws does
/// not keep the emission from those after it; the first exception leaves emit() when all have been called.
template <class... Args>
class signal_t
{
    using arguments_t = std::tuple<Args&...>;

    template <class F>
    using enable_for_callable = std::enable_if_t<!std::is_same<std::decay_t<F>, signal_t>::value &&
                                                 std::is_invocable<std::decay_t<F>&, Args...>::value>;

public:
    /// Connects a callable for as long as the slot list lives or until the returned connection is ended.
    /// An empty std::function is not connected.
    template <class F, class = enable_for_callable<F>>
    connection connect(F&& callable)
    {
        if (is_empty_callable(callable))
            return connection();
        return m_slots.connect([slot = std::decay_t<F>(std::forward<F>(callable))](void* arguments) mutable {
            std::apply(slot, *static_cast<arguments_t*>(arguments));
        });
    }

    /// Connects a callable until `owner` is destroyed. A null owner gets no connection: nothing would ever
    /// end it.
    template <class F, class = enable_for_callable<F>>
    void connect(subscriber_base_t* owner, F&& callable)
    {
        if (owner)
            owner->keep_connection(connect(std::forward<F>(callable)));
    }

    /// Connects a method of a subscriber until that subscriber is destroyed.
    template <class T, class C, class R, class... P>
    void connect(T* object, R (C::*method)(P...))
    {
        static_assert(std::is_base_of<subscriber_base_t, T>::value, "the object must be a subscriber");
        if (object && method)
            connect(static_cast<subscriber_base_t*>(object),
                    [object, method](Args... args) { (object->*method)(std::forward<Args>(args)...); });
    }

    template <class T, class C, class R, class... P>
    void connect(T* object, R (C::*method)(P...) const)
    {
        static_assert(std::is_base_of<subscriber_base_t, std::remove_const_t<T>>::value,
                      "the object must be a subscriber");
        if (object && method)
            connect(static_cast<subscriber_base_t*>(const_cast<std::remove_const_t<T>*>(object)),
                    [object, method](Args... args) { (object->*method)(std::forward<Args>(args)...); });
    }

    /// Passes every emission on to the slots of `other`, which is kept alive by this. Connecting a signal to
    /// itself (or to a copy of itself) does nothing; longer circles are the caller's mistake and never end.
    connection connect(const signal_t& other)
    {
        if (other.m_slots.is_same(m_slots))
            return connection();
        return connect([other](Args... args) { other.emit(std::forward<Args>(args)...); });
    }

    void emit(Args... args) const
    {
        arguments_t arguments(args...);
        m_slots.emit(&arguments);
    }

    void operator()(Args... args) const { emit(std::forward<Args>(args)...); }

    bool empty() const { return m_slots.num_slots() == 0; }
    std::size_t num_slots() const { return m_slots.num_slots(); }
    void disconnect_all() { m_slots.disconnect_all(); }

private:
    template <class F>
    static bool is_empty_callable(const F&)
    {
        return false;
    }
    template <class R, class... P>
    static bool is_empty_callable(const std::function<R(P...)>& f)
    {
        return !f;
    }
    template <class R, class... P>
    static bool is_empty_callable(R (*const& f)(P...))
    {
        return !f;
    }

    slot_list_t m_slots;
};

} // namespace _internal

using _internal::connection;
using _internal::signal_t;
using _internal::subscriber_base_t;

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
