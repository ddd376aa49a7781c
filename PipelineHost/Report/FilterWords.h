#pragma once

#include <string>
#include <vector>

namespace OvPipeline {

/// Hears what the filters' library reports of exceptions that end in a result, since the result is all that
/// the pipeline gets. While one of these lives, each thread's reports are kept for it, and passed on to
/// whoever heard them before.
class FilterWords {
public:
    FilterWords();
    FilterWords(const FilterWords&) = delete;
    FilterWords& operator=(const FilterWords&) = delete;
    ~FilterWords();

    /// What the calling thread's first report since Forget says of the failure, without the places in the
    /// source: what came after it follows from it. Empty where nothing was reported.
    static std::string First();
    static void Forget() noexcept;

    /// What all threads have reported while anybody listened, or since ForgetAll, each text once, in the
    /// order of the reports: its warnings, and what a filter got over, where its job went well. Of many only
    /// the first.
    std::vector<std::string> Heard() const;
    /// Of filters that were only on trial.
    static void ForgetAll() noexcept;
};

} // namespace OvPipeline
