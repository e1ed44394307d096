#include "cli/common/terminal.h"

#include "platform/terminal.h"

#include <cstdio>

namespace taldork::cli {

namespace {

constexpr auto quietTime = std::chrono::milliseconds(400);
constexpr auto drawInterval = std::chrono::milliseconds(100);

} // namespace

ProgressDisplay ProgressDisplay::standard() {
    return {platform::isTerminal(platform::Stream::kError),
            [](const std::string& text) {
                std::fputs(text.c_str(), stderr);
                std::fflush(stderr);
            },
            [] { return std::chrono::steady_clock::now(); }};
}

Progress::Progress(std::string work, std::size_t total, ProgressDisplay display)
    : m_work(std::move(work)), m_total(total), m_display(std::move(display)),
      m_next(m_display.now() + quietTime) {}

Progress::~Progress() {
    if (m_drawnWidth != 0)
        m_display.print("\r" + std::string(m_drawnWidth, ' ') + "\r");
}

void Progress::step() {
    ++m_done;
    if (m_display.isTerminal && m_display.now() >= m_next)
        draw();
}

void Progress::draw() {
    std::string line = m_work + " " + std::to_string(m_done);
    if (m_total != 0)
        line += " of " + std::to_string(m_total);
    m_display.print("\r" + padRight(line, m_drawnWidth));
    m_drawnWidth = displayWidth(line);
    m_next = m_display.now() + drawInterval;
}

std::size_t displayWidth(const std::string& utf8) {
    std::size_t width = 0;
    for (const char c : utf8)
        width += (static_cast<unsigned char>(c) & 0xc0) != 0x80;
    return width;
}

std::string padRight(const std::string& text, std::size_t width) {
    const std::size_t own = displayWidth(text);
    return own < width ? text + std::string(width - own, ' ') : text;
}

std::string padLeft(const std::string& text, std::size_t width) {
    const std::size_t own = displayWidth(text);
    return own < width ? std::string(width - own, ' ') + text : text;
}

std::string counted(std::size_t number, const std::string& noun) {
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

} // namespace taldork::cli
