// The settings by which calls are traced.
#include "odbcadmin/model/trace_settings.h"

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class TraceSettingsTest : public ModelTest {
protected:
    std::string settings(const std::string& section) {
        home_.put(".odbc.ini", section);
        const Configuration configuration = Configuration::read();
        const TraceSettings settings = traceSettings(configuration);
        return std::string(settings.isOn ? "on" : "off") + (settings.stopsByItself ? ", stops" : "") + ", " +
               settings.file + (settings.trace ? ", line " + std::to_string(settings.trace.line) : "");
    }
};

TEST_F(TraceSettingsTest, NumbersAndWordsTurnItOn) {
    const struct {
        std::string text, told;
    } rows[] = {
        {"", "off, sql.log"},
        {"[ODBC]\n", "off, sql.log"},
        {"[ODBC]\nTrace=0\n", "off, sql.log, line 2"},
        {"[ODBC]\nTrace=1\n", "on, sql.log, line 2"},
        {"[odbc]\ntrace=9x\n", "on, sql.log, line 2"},
        {"[ODBC]\nTrace=Yes\nTraceFile=/tmp/t\n", "on, /tmp/t, line 2"},
        {"[ODBC]\nTrace=ON\nTraceFile=\n", "on, sql.log, line 2"},
        {"[ODBC]\nTrace=true\nTraceAutoStop=1\n", "on, stops, sql.log, line 2"},
        {"[ODBC]\nTrace=\n", "off, sql.log, line 2"},
        {"[ODBC]\nTrace=onward\n", "off, sql.log, line 2"},
        {"[ODBC]\nTrace=off\n", "off, sql.log, line 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(settings(row.text), row.told);
    }
}

TEST_F(TraceSettingsTest, AreTurnedOnAndOff) {
    const auto on = [](const auto&, const ChangeWay& way) { return turnTraceOn("/tmp/t.log", way); };
    const auto off = [](const auto&, const ChangeWay& way) { return turnTraceOff(way); };
    EXPECT_EQ(change(off), "");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(change(on), "");
    EXPECT_EQ(sources(), with(kSources, "Trace=0\n", "Trace=1\nTraceFile=/tmp/t.log\n"));
    EXPECT_EQ(change(on), "");
    EXPECT_EQ(change(off), "");
    EXPECT_EQ(sources(), with(kSources, "Trace=0\n", "Trace=0\nTraceFile=/tmp/t.log\n"));
    home_.put(".odbc.ini", "");
    EXPECT_EQ(change(off), "");
    EXPECT_EQ(sources(), "");
    EXPECT_EQ(change(on), "");
    EXPECT_EQ(sources(), "[ODBC]\nTrace=1\nTraceFile=/tmp/t.log\n");
}

TEST_F(TraceSettingsTest, AFileNameThatCannotBeStoredIsRefused) {
    EXPECT_EQ(change([](const auto&, const ChangeWay& way) { return turnTraceOn("a\nb", way); }),
              "refused: This value of TraceFile cannot be stored: it holds a line break | ~/.odbc.ini could not give "
              "it back as it is; use another one.");
}

}  // namespace
}  // namespace jx::model::test
