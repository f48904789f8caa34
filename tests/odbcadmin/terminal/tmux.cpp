// Calling tmux.
#include "tmux.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>

#include "pty.h"
#include "run_program.h"

namespace jx::test {

Tmux::Tmux(const TestHome& home, int columns, int lines, const std::string& environment, const std::string& command)
    : socket_(home.file("tmux")) {
    home.put("tmux.conf", "set -g status off\nset -g escape-time 0\nset -g mouse off\n");
    run("-f " + home.file("tmux.conf") + " new-session -d -x " + std::to_string(columns) + " -y " +
        std::to_string(lines) + " " + shellQuoted("exec env HOME=" + home.path() + " " + environment + " " + command));
}

Tmux::~Tmux() {
    run("kill-server");
}

std::string Tmux::run(const std::string& command) const {
    const auto close = [](FILE* file) { ::pclose(file); };
    const std::string line = "env LC_ALL=C.UTF-8 tmux -u -S " + socket_ + " " + command + " 2>&1";
    const std::unique_ptr<FILE, decltype(close)> output(::popen(line.c_str(), "r"), close);
    std::string text;
    std::array<char, 4096> bytes{};
    while (output != nullptr && std::fgets(bytes.data(), static_cast<int>(bytes.size()), output.get()) != nullptr)
        text += bytes.data();
    return text;
}

void Tmux::keys(const std::string& names) const {
    run("send-keys " + names);
}

void Tmux::resize(int columns, int lines) const {
    run("resize-window -x " + std::to_string(columns) + " -y " + std::to_string(lines));
}

std::string Tmux::screen() const {
    return run("capture-pane -p");
}

std::string Tmux::waitForScreen(const std::string& expected) const {
    std::string last;
    waitUntil([&] { return (last = screen()) == expected; });
    return last;
}

std::string Tmux::waitForPart(const std::string& part) const {
    std::string last;
    waitUntil([&] { return (last = screen()).find(part) != std::string::npos; });
    return last;
}

}  // namespace jx::test
