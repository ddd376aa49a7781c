#pragma once

#include "Support/ReportRecorder.h"

#include <Com/FaultInjection.h>

#include <windows.h>
#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <memory>
#include <set>
#include <string>

/// What an operation says: a question its answer, an edit its result.
struct SweptAnswer {
    bool hasFailed = false;
    std::string text;

    SweptAnswer() = default;
    SweptAnswer(HRESULT hr) : hasFailed(FAILED(hr)), text(std::to_string(hr)) {}
    SweptAnswer(std::string answer) : text(std::move(answer)) {}
    bool operator==(const SweptAnswer&) const = default;
};

/// Runs an operation once for each platform call that it makes, with that call failing, each time on a world
/// made anew. A world has a State(), such as the text of its ticket. Afterwards
///   - the state is as it was, or as the operation leaves it where nothing fails (or one of `alsoAllowed`),
///   - an operation that told of no failure, by exception, result or report, has done all it was asked to,
///   - the failure is not remembered: asked once more, the operation does and answers as it should.
template <typename World>
class FailureSweep {
public:
    using Maker = std::function<std::unique_ptr<World>()>;
    using Operation = std::function<SweptAnswer(World&)>;

    FailureSweep(Maker make, Operation operation)
        : m_make(std::move(make)), m_operation(std::move(operation)) {
        const auto world = m_make();
        m_before = world->State();
        OvPlatform::FaultInjection::CountCalls();
        m_answer = m_operation(*world);
        OvPlatform::FaultInjection::Reset();
        m_calls = OvPlatform::FaultInjection::CallCount();
        m_asked = world->State();
        m_operation(*world);
        m_askedTwice = world->State();
    }

    void Run(const std::string& name, const std::set<std::string>& alsoAllowed = {}) {
        EXPECT_GT(m_calls, 0) << name << " was not swept";
        EXPECT_FALSE(m_answer.hasFailed) << name << " fails by itself: " << m_answer.text;
        LONG wrongPoints = 0;
        std::string firstWrong;
        for (LONG point = 1; point <= m_calls; ++point) {
            const std::string wrong = WrongAt(point, alsoAllowed);
            if (!wrong.empty() && wrongPoints++ == 0) firstWrong = std::to_string(point) + ": " + wrong;
        }
        EXPECT_EQ(wrongPoints, 0) << name << ", of " << m_calls << " points. The first is " << firstWrong;
    }

    [[nodiscard]] bool IsEdit() const { return m_before != m_asked; }

private:
    std::string WrongAt(LONG point, const std::set<std::string>& alsoAllowed) {
        const auto world = m_make();
        SweptAnswer answer;
        bool isTold = false;
        {
            const ReportRecorder recorder;
            const OvPlatform::FaultInjectionScope fault(point, E_ABORT);
            try {
                answer = m_operation(*world);
                isTold = answer.hasFailed;
            } catch (const std::exception&) {
                isTold = true;
            }
            if (!ReportRecorder::reports().empty()) isTold = true;
        }
        const std::string state = world->State();
        // The platform remembers texts that it has read, so that there may be fewer calls than before.
        if (!OvPlatform::FaultInjection::HasFailed())
            return state == m_asked && answer == m_answer ? "" : "another outcome without a failure";
        if (state != m_before && state != m_asked && !alsoAllowed.contains(state))
            return "neither as it was nor as asked: " + state;
        if (!isTold && state != m_asked) return "nobody was told that it was not done";
        if (!isTold && !(answer == m_answer)) return "nobody was told of a wrong answer, " + answer.text;
        return WrongAgain(*world, state);
    }

    std::string WrongAgain(World& world, const std::string& state) {
        try {
            const SweptAnswer answer = m_operation(world);
            const std::string expected = state == m_asked ? m_askedTwice : m_asked;
            if (world.State() != expected) return "not as asked the second time: " + world.State();
            // An edit that is done twice may say that there was nothing to do.
            if (state != m_asked || !IsEdit())
                if (!(answer == m_answer)) return "a wrong answer the second time: " + answer.text;
            return {};
        } catch (const std::exception& failure) {
            return std::string("it fails the second time: ") + failure.what();
        }
    }

    Maker m_make;
    Operation m_operation;
    std::string m_before;
    std::string m_asked;
    std::string m_askedTwice;
    SweptAnswer m_answer;
    LONG m_calls = 0;
};
