#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

/// A command that is run in several rounds, each in a process of its own. The medians count, since the
/// machine may have other work.
struct MeasuredCommand {
    std::vector<double> seconds;
    std::vector<double> processorSeconds;
    double peakMegabytes = 0;

    static double Median(std::vector<double> values) {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    /// One round. What it prints is dropped. Throws where it fails.
    void Run(const std::vector<std::string>& command) {
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string& part : command)
            arguments.push_back(const_cast<char*>(part.c_str()));
        arguments.push_back(nullptr);

        std::fflush(nullptr); // lest the child prints it again
        const auto start = std::chrono::steady_clock::now();
        const pid_t child = fork();
        if (child == 0) {
            if (!std::freopen("/dev/null", "w", stdout)) _exit(126);
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        int status = 0;
        rusage usage{};
        if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
            WEXITSTATUS(status) != 0)
            throw std::runtime_error("failed: " + command[0] + " " + command[1]);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        seconds.push_back(elapsed.count());
        processorSeconds.push_back(Seconds(usage.ru_utime) + Seconds(usage.ru_stime));
        peakMegabytes = std::max(peakMegabytes, static_cast<double>(usage.ru_maxrss) / 1024);
    }

private:
    static double Seconds(const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    }
};
