#include "progress_watch.h"

#include "commondlg3/text_utils.h"

#include <cpil/catalog.h>

#include <algorithm>
#include <cmath>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using seconds_t = std::chrono::duration<double>;

constexpr double measured_every = 1;
constexpr double trusted_after = 2;
constexpr double trusted_from = 0.05; // of the work
constexpr double silent_after = 10;
constexpr double memory = 10;       // seconds ago count for about a third
constexpr double least_count = 100; // a total below is hardly a number of things

double round_to(double value, double step)
{
    return std::max(step, std::ceil(value / step - 0.01) * step);
}

// Two digits are all that can be read of a number that changes.
double two_digits(double value)
{
    const double step = std::pow(10, std::max(0.0, std::floor(std::log10(value)) - 1));
    return std::round(value / step) * step;
}

std::string translate_number(const char* key, double number)
{
    return translate_message(key, {{"count", static_cast<long long>(number)}});
}

} // namespace

void progress_watch_t::started(double total, moment_t now)
{
    const std::uint64_t signs = m_signs;
    const bool stopping = m_stopping;
    *this = progress_watch_t();
    m_signs = signs;
    m_stopping = stopping;
    m_running = true;
    m_known = total > 0 && std::isfinite(total);
    m_total = total;
    m_begin = m_last_sign = m_measured = now;
}

void progress_watch_t::ended()
{
    m_running = m_stopping = m_trusted = false;
}

void progress_watch_t::look(double fraction, std::uint64_t signs, moment_t now)
{
    if (!m_running)
        return;
    if (signs != m_signs) {
        m_signs = signs;
        m_last_sign = now;
    }
    const double silence = seconds_t(now - m_last_sign).count();
    m_silence = silence < silent_after ? 0 : std::floor(silence / 10) * 10;
    const double seconds = seconds_t(now - m_measured).count();
    if (m_known && seconds >= measured_every) {
        measure(fraction, seconds);
        m_measured = now;
        judge(fraction, now);
    }
}

void progress_watch_t::measure(double fraction, double seconds)
{
    const double kept = std::exp(-seconds / memory);
    m_weighted_part = m_weighted_part * kept + std::max(0.0, fraction - m_fraction);
    m_weighted_seconds = m_weighted_seconds * kept + seconds;
    m_fraction = fraction;
}

void progress_watch_t::judge(double fraction, moment_t now)
{
    const double speed = m_weighted_part / m_weighted_seconds;
    if (fraction >= 1 || fraction < trusted_from || !(speed > 0) ||
        now - m_begin < seconds_t(trusted_after)) {
        m_trusted = false;
        return;
    }
    const double left = (1 - fraction) / speed;
    const double told = seconds_t(m_end - now).count();
    const double most_wrong = std::max(3.0, told * 0.2);
    if (!m_trusted || told <= 0 || std::abs(left - told) > most_wrong)
        m_end = now + std::chrono::duration_cast<moment_t::duration>(seconds_t(std::min(left, 1e7)));
    m_left = seconds_t(m_end - now).count();
    const double rate = speed * m_total;
    if (!m_trusted || std::abs(rate - m_rate) > m_rate * 0.1)
        m_rate = rate;
    m_trusted = true;
}

progress_watch_t::kind_t progress_watch_t::get_kind() const
{
    if (m_stopping)
        return kind_t::stopping;
    if (!m_running)
        return kind_t::nothing;
    if (m_silence > 0)
        return kind_t::silent;
    return m_trusted ? kind_t::estimate : kind_t::nothing;
}

std::string progress_watch_t::describe_rate() const
{
    if (m_total < least_count)
        return {};
    if (m_rate >= 1)
        return translate_number(catalog_key("inplace_ctrl.rate_second"), two_digits(m_rate));
    return m_rate * 60 >= 1
               ? translate_number(catalog_key("inplace_ctrl.rate_minute"), two_digits(m_rate * 60))
               : std::string();
}

std::string progress_watch_t::get_note() const
{
    switch (get_kind()) {
    case kind_t::nothing:
        return {};
    case kind_t::stopping:
        return translate_message("inplace_ctrl.stopping");
    case kind_t::silent:
        return m_silence < 120
                   ? translate_number(catalog_key("inplace_ctrl.silent_seconds"), m_silence)
                   : translate_number(catalog_key("inplace_ctrl.silent_minutes"), std::floor(m_silence / 60));
    case kind_t::estimate:
        break;
    }
    const std::string left =
        m_left < 5     ? translate_message("inplace_ctrl.left_few")
        : m_left <= 90 ? translate_number(catalog_key("inplace_ctrl.left_seconds"), round_to(m_left, 5))
        : m_left < 7200
            ? translate_number(catalog_key("inplace_ctrl.left_minutes"), round_to(m_left / 60, 1))
            : translate_number(catalog_key("inplace_ctrl.left_hours"), round_to(m_left / 3600, 1));
    const std::string rate = describe_rate();
    return rate.empty() ? left
                        : translate_message("inplace_ctrl.left_and_rate", {{"left", left}, {"rate", rate}});
}

} // namespace commondlg3
