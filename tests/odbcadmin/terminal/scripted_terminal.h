// A terminal whose user is a list of keys and whose pictures are kept.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/terminal/terminal.h"

namespace jx::test {

using terminal::Input;
using terminal::Key;
using terminal::Point;

// One step of a script: an input, or something to do before the next one.
struct Step {
    Input input;
    std::function<void()> work;
    bool isMeanwhile = false;
};

Step press(Key key);
Step type(const std::string& character);
Step alt(const std::string& character);
Step click(int column, int line);
Step doubleClick(int column, int line);
Step wheel(Key direction, int column, int line);
Step perform(std::function<void()> work);
// The same, typed while something is at work.
Step meanwhile(Step step);
// Every character of a text, one after another.
std::vector<Step> typed(const std::string& text);

// ScriptedTerminal: gives the steps in turn; the user is gone after the last one.
class ScriptedTerminal : public terminal::Terminal {
public:
    ScriptedTerminal(int columns, int lines, terminal::Abilities abilities = {})
        : columns_(columns), lines_(lines), abilities_(abilities) {}

    void then(Step step) { steps_.push_back(std::move(step)); }
    void then(std::vector<Step> steps) { steps_.insert(steps_.end(), steps.begin(), steps.end()); }
    // Before what is still to come: for steps that depend on what is seen.
    void thenFirst(const std::vector<Step>& steps) { steps_.insert(steps_.begin(), steps.begin(), steps.end()); }
    void resize(int columns, int lines) { columns_ = columns, lines_ = lines; }

    // Notes the picture under which the next input arrives.
    void look();
    const std::vector<std::string>& seen() const { return seen_; }
    const std::string& shown() const { return shown_; }
    const terminal::Canvas& canvas() const { return canvas_; }
    // The row of the list of the main dialog that has the focus, without the blanks behind it.
    std::string focusedRow() const;
    std::optional<Point> cursor() const { return cursor_; }
    // Every picture, also those that stood while something was at work.
    const std::vector<std::string>& pictures() const { return pictures_; }

    terminal::Abilities abilities() const override { return abilities_; }
    int columns() const override { return columns_; }
    int lines() const override { return lines_; }
    void show(const terminal::Canvas& canvas, std::optional<Point> cursor) override;
    Input next() override;
    void beforeWork() override {}
    void afterWork() override;
    void setWorker(const std::string& worker) override { workers_.push_back(worker); }
    // Everybody whose code was announced, "" for the program's own.
    const std::vector<std::string>& workers() const { return workers_; }

private:
    int columns_;
    int lines_;
    terminal::Abilities abilities_;
    std::deque<Step> steps_;
    terminal::Canvas canvas_{0, 0};
    std::optional<Point> cursor_;
    std::string shown_;
    std::vector<std::string> seen_;
    std::vector<std::string> pictures_;
    std::vector<std::string> workers_;
    long time_ = 0;
};

}  // namespace jx::test
