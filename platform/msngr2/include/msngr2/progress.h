/// @file
/// How long-running work reports how far it has come.
#pragma once

namespace msngr2 {

/// One piece of work: begun with start(), advanced by the worker, which asks isCanceled() now and then.
///
///     progress->start("Reading samples", files.size());
///     for (const auto& file : files) {
///         if (progress->isCanceled())
///             break;
///         read(file);
///         progress->internalProgressed(1);
///     }
///     progress->finish();
///
/// Texts are UTF-8. Whoever hands one out says which threads may call it and how long it lives.
class IProgress
{
public:
    /// Begins a new count. @param total how many steps the work has, in any unit, fractions too
    virtual void start(const char* text, double total) = 0;
    /// So many more steps are done.
    virtual void progressed(int steps) = 0;
    /// The same in fractions of a step.
    virtual void internalProgressed(double amount) = 0;
    /// What is being done now.
    virtual void message(const char* text) = 0;
    /// The work has ended, whether or not all steps are done.
    virtual void finish() = 0;
    /// Asks the worker to stop; the worker sees it by isCanceled().
    virtual void cancel() = 0;
    /// What start() was given.
    virtual double getTotalSteps() = 0;
    /// Whether the worker is to stop.
    virtual bool isCanceled() = 0;

protected:
    ~IProgress() = default;
};

} // namespace msngr2
