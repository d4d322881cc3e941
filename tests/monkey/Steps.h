#pragma once

#include <QString>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

/// The last steps in words and how to play them again, printed when a sanitizer, an assertion, a check or a crash ends
/// the program, or when a step does not end. Fixed memory: a handler of signals may neither allocate nor format.
class Steps {
public:
    static void begin(int step, unsigned seed)
    {
        for (const int signal : {SIGABRT, SIGALRM, SIGSEGV})
            if (const auto before = std::signal(signal, print); before != SIG_DFL)
                std::signal(signal, before); // a sanitizer reports crashes itself
        alarm(60);                           // s
        std::snprintf(again.data(), again.size(), "\nagain: monkey %d %u\n", step + 1, seed);
        lines.at(++count % lines.size()).fill(0);
        add(QStringLiteral("\n%1").arg(step, 6));
    }
    /// Adds to what the present step does.
    static void add(const QString& words)
    {
        Line& line = lines.at(count % lines.size());
        const std::size_t used = std::strlen(line.data());
        std::snprintf(line.data() + used, line.size() - used, "%s ", qUtf8Printable(words));
    }

private:
    using Line = std::array<char, 160>;

    static void print(int /*signal*/)
    {
        std::signal(SIGABRT, SIG_DFL);
        for (std::size_t i = 1; i <= lines.size(); ++i)
            write(lines.at((count + i) % lines.size()));
        write(again);
        std::abort();
    }
    static void write(const Line& line) { Q_UNUSED(::write(STDERR_FILENO, line.data(), std::strlen(line.data()))); }

    static inline std::array<Line, 30> lines{};
    static inline Line again{};
    static inline std::size_t count = 0;
};
