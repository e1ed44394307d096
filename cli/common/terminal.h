#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace taldork::cli {

/// Where progress is shown. The default is standard error and the system's clock; tests bring their own.
struct ProgressDisplay {
    using Time = std::chrono::steady_clock::time_point;

    bool isTerminal = false;
    std::function<void(const std::string&)> print;
    std::function<Time()> now;

    static ProgressDisplay standard();
};

/// Shows on a terminal how far long work has come, as one line that is wiped when the work ends. Says nothing
/// into a pipe or a file, and nothing for work that is over before a person would look.
class Progress {
public:
    /// @param total number of steps, 0 when it is not known
    explicit Progress(std::string work, std::size_t total = 0,
                      ProgressDisplay display = ProgressDisplay::standard());
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void step();

private:
    void draw();

    std::string m_work;
    std::size_t m_total;
    ProgressDisplay m_display;
    std::size_t m_done = 0;
    std::size_t m_drawnWidth = 0;
    ProgressDisplay::Time m_next;
};

/// Widths of a text on a terminal, for tables: characters, not bytes.
std::size_t displayWidth(const std::string& utf8);

/// `text` with blanks behind it (or before it) up to `width` characters.
std::string padRight(const std::string& text, std::size_t width);
std::string padLeft(const std::string& text, std::size_t width);

/// "1 record", "2 records".
std::string counted(std::size_t number, const std::string& noun);

} // namespace taldork::cli
