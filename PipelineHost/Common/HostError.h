#pragma once

#include <Com/FaultInjection.h>

#include <windows.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace OvPipeline {

/// Trouble that the host itself finds. what() says in words what is wrong; Subject() is the part, module or
/// file that it is about.
class HostError : public std::runtime_error {
public:
    HostError(HRESULT result, std::string subject, const std::string& problem, bool fromInput = false)
        : std::runtime_error(problem), m_result(result), m_subject(std::move(subject)),
          m_fromInput(fromInput) {}

    HRESULT Result() const { return m_result; }
    const std::string& Subject() const { return m_subject; }
    /// The job's package or another input is at fault, not the filter.
    bool FromInput() const { return m_fromInput; }

private:
    HRESULT m_result;
    std::string m_subject;
    bool m_fromInput;
};

/// A HostError about the job's package.
inline HostError InputError(HRESULT result, std::string subject, const std::string& problem) {
    return {result, std::move(subject), problem, true};
}

/// What a failing HRESULT of the host's methods stands for: kept for the thread that got it, since the
/// HRESULT is all that a filter hands on.
struct FailureNote {
    HRESULT result = S_OK;
    std::string subject;
    std::string problem;
    bool fromInput = false;
};

/// The calling thread's last note, and the name of the part that it last had in hand.
FailureNote& ThreadNote();
std::string& ThreadPart();
/// The part that it took last. It has that in hand again once another is sent.
std::string& TakenPart();

/// Turns the exception in flight into its HRESULT and notes it.
HRESULT NoteException() noexcept;

/// The body of a method that filters call: nothing is thrown out of it.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
    if (const HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    try {
        return body();
    } catch (...) {
        return NoteException();
    }
}

} // namespace OvPipeline
