#pragma once

#include <memory>
#include <string>
#include <vector>

namespace test {

/// What one logger is told, traces included, for as long as it lives.
class trace_t
{
public:
    explicit trace_t(const std::string& logger);
    ~trace_t();
    const std::vector<std::string>& lines() const;
    bool has(const std::string& beginning) const;

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

} // namespace test
