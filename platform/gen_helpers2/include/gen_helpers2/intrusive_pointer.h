#pragma once

#include "gen_helpers2/export.h"

#include <atomic>

// Interfaces may declare add_ref() and release() themselves, as their first two virtual operations, without
// knowing of this header. Their namespaces hold no functions for boost::intrusive_ptr to find, so these two
// are declared where its own look-up begins; they must therefore come before its header. Where another header
// has brought that one in earlier, let the interface derive from i_ref_counted.
namespace boost {

template <class T>
auto intrusive_ptr_add_ref(T* p) -> decltype(p->add_ref(), void())
{
    p->add_ref();
}

template <class T>
auto intrusive_ptr_release(T* p) -> decltype(p->release(), void())
{
    p->release();
}

} // namespace boost

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace gen_helpers2 {

/// A pointer that holds one reference to a reference-counted object.
/// A raw pointer given to its constructor gets a reference of its own; give `false` as second argument to
/// take over a reference that the caller already holds.
template <class T>
using intrusive_pointer_t = boost::intrusive_ptr<T>;

/// The same by its shorter name, which interfaces use.
template <class T>
using sptr_t = boost::intrusive_ptr<T>;

/// What every reference-counted interface has first. Objects are never deleted through it.
class i_ref_counted
{
public:
    virtual void add_ref() = 0;
    virtual void release() = 0;

protected:
    ~i_ref_counted() = default;
};

inline void intrusive_ptr_add_ref(i_ref_counted* p)
{
    p->add_ref();
}
inline void intrusive_ptr_release(i_ref_counted* p)
{
    p->release();
}

/// Implements the counting for an interface whose first two operations are add_ref() and release().
/// The count starts at zero and the object deletes itself when the last reference goes: create it with new
/// and give it to an sptr_t at once; never put it on the stack. Counting is safe in any thread.
///
/// \code
/// class reader_t : public gen_helpers2::ref_counted_of_t<i_reader> { ... };
/// gen_helpers2::sptr_t<i_reader> reader(new reader_t);
/// \endcode
template <class Interface>
class ref_counted_of_t : public Interface
{
public:
    void add_ref() override { m_count.fetch_add(1, std::memory_order_relaxed); }

    void release() override
    {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

protected:
    ref_counted_of_t() = default;
    // The count belongs to the object, not to its value.
    ref_counted_of_t(const ref_counted_of_t& other) : Interface(other) {}
    ref_counted_of_t& operator=(const ref_counted_of_t& other)
    {
        Interface::operator=(other);
        return *this;
    }
    // NOLINTNEXTLINE(modernize-use-override): not every interface has a virtual one.
    virtual ~ref_counted_of_t() = default;

private:
    std::atomic<long> m_count{0};
};

/// A reference-counted class that implements no further interface, or declares its operations itself.
using ref_counted_t = ref_counted_of_t<i_ref_counted>;

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
