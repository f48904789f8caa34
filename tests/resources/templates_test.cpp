// Every dialog template of the modules "odbcinst" and "jxsetup", as a screen sees it.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <jxscreen.h>
#include <jxwindow.h>
#include "resources/templates.h"
#include "setup/setup_template.h"

namespace {

unsigned int doNothing(HWND, int, int, uintptr_t) {
    return 0;
}

struct Registered {
    const char* module;
    JxwTemplate shape;
};

std::vector<Registered> allTemplates() {
    std::vector<Registered> all;
    for (const JxwTemplate* shape = jx::kTemplates; shape->title != nullptr; ++shape)
        all.push_back({"odbcinst", *shape});
    for (const JxwTemplate* shape = jx::setup::kSetupTemplates; shape->title != nullptr; ++shape)
        all.push_back({jx::setup::kModule, *shape});
    return all;
}

// A dialog made from a registered template. The installer library has registered its own; the setup library's are
// registered here, since that library does it for each call.
class EachTemplate : public testing::TestWithParam<Registered> {
protected:
    EachTemplate() {
        JXW_RegisterModule(jx::setup::kModule, nullptr, jx::setup::kSetupTemplates);
        dialog = JXW_CreateDialog(GetParam().module, GetParam().shape.id, 0, doNothing, nullptr);
        JXW_GetDialogInfo(dialog, &info);
        for (int index = 0; index < info.controlCount; ++index) {
            controls.emplace_back();
            JXW_GetControlInfo(dialog, index, &controls.back());
        }
    }
    ~EachTemplate() override { JXW_DestroyDialog(dialog); }

    HWND dialog = 0;
    JxwDialogInfo info{};
    std::vector<JxwControlInfo> controls;
};

bool takesPartInTab(const JxwControlInfo& control) {
    return control.kind != JXW_LABEL && control.kind != JXW_GROUPBOX;
}

bool overlap(const JxwControlInfo& a, const JxwControlInfo& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool isInside(const JxwControlInfo& inner, const JxwControlInfo& frame) {
    return inner.x > frame.x && inner.y > frame.y && inner.x + inner.width < frame.x + frame.width &&
           inner.y + inner.height <= frame.y + frame.height;
}

std::string describe(const JxwControlInfo& control) {
    return "control " + std::to_string(control.id) + " \"" + control.text + "\"";
}

TEST_P(EachTemplate, IsRegistered) {
    ASSERT_NE(dialog, 0U);
    EXPECT_STREQ(info.title, GetParam().shape.title);
    EXPECT_GT(info.controlCount, 0);
}

TEST_P(EachTemplate, FitsATerminalOf80By24) {
    EXPECT_LE(info.width / 4 + 2, 80);
    EXPECT_LE((info.height + 7) / 8 + 2, 24);
}

TEST_P(EachTemplate, KeepsItsControlsInsideAndOnTheGrid) {
    for (const JxwControlInfo& control : controls) {
        SCOPED_TRACE(describe(control));
        EXPECT_GE(control.x, 0);
        EXPECT_GE(control.y, 0);
        EXPECT_LE(control.x + control.width, info.width);
        EXPECT_LE(control.y + control.height, info.height);
        EXPECT_EQ(control.x % 4 + control.y % 8 + control.width % 4, 0);
        EXPECT_GT(control.width, 0);
        EXPECT_GE(control.height, 8);
    }
}

TEST_P(EachTemplate, HasNoControlOnTopOfAnother) {
    for (std::size_t i = 0; i < controls.size(); ++i) {
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            const bool framed = controls[i].kind == JXW_GROUPBOX && isInside(controls[j], controls[i]);
            EXPECT_TRUE(framed || !overlap(controls[i], controls[j]))
                << describe(controls[i]) << " and " << describe(controls[j]);
        }
    }
}

TEST_P(EachTemplate, HasRoomForEveryCaption) {
    for (const JxwControlInfo& control : controls) {
        const std::size_t length = std::strlen(control.text) - (control.accessKey != 0 ? 1 : 0);
        const std::size_t around = control.kind == JXW_LABEL ? 0 : 4;  // "[ OK ]", "[x] ", the corners of a frame
        EXPECT_LE((length + around) * 4, static_cast<std::size_t>(control.width)) << describe(control);
    }
}

TEST_P(EachTemplate, GivesEachIdOnce) {
    std::set<unsigned short> ids;
    for (const JxwControlInfo& control : controls)
        EXPECT_TRUE(control.id == 0 || ids.insert(control.id).second) << describe(control);
}

TEST_P(EachTemplate, GivesEachAccessKeyOnce) {
    std::set<int> keys;
    for (const JxwControlInfo& control : controls)
        EXPECT_TRUE(control.accessKey == 0 || keys.insert(control.accessKey).second) << describe(control);
}

TEST_P(EachTemplate, CanBeReachedWithoutAMouse) {
    for (std::size_t at = 0; at < controls.size(); ++at) {
        const JxwControlInfo& control = controls[at];
        const bool isStandard = control.id == IDOK || control.id == IDCANCEL;
        if (!takesPartInTab(control) || isStandard)
            continue;
        const bool labelled = at > 0 && controls[at - 1].kind == JXW_LABEL && controls[at - 1].accessKey != 0;
        EXPECT_TRUE(control.accessKey != 0 || labelled) << describe(control);
    }
}

TEST_P(EachTemplate, SaysWhatEachControlIs) {
    for (std::size_t at = 0; at < controls.size(); ++at) {
        const JxwControlInfo& control = controls[at];
        if (!takesPartInTab(control))
            continue;
        const bool labelled = at > 0 && controls[at - 1].kind == JXW_LABEL && controls[at - 1].text[0] != '\0';
        EXPECT_TRUE(control.text[0] != '\0' || labelled) << describe(control);
    }
}

TEST_P(EachTemplate, HasOneDefaultButtonAndOneThatEscapePresses) {
    int defaults = 0;
    int closing = 0;
    for (const JxwControlInfo& control : controls) {
        defaults += control.kind == JXW_BUTTON && (control.flags & JXW_DEFAULT) != 0 ? 1 : 0;
        closing += control.id == IDCANCEL || (control.flags & JXW_CLOSE) != 0 ? 1 : 0;
    }
    EXPECT_EQ(defaults, 1);
    EXPECT_EQ(closing, 1);
}

// At first the focus is in the dialog's main list or field; Tab moves it down and to the right.
TEST_P(EachTemplate, HasATabOrderThatFollowsTheEye) {
    const JxwControlInfo* before = nullptr;
    for (const JxwControlInfo& control : controls) {
        if (!takesPartInTab(control))
            continue;
        if (before != nullptr) {
            EXPECT_TRUE(control.x > before->x || control.y > before->y)
                << describe(control) << " behind " << describe(*before);
        }
        before = &control;
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheModule, EachTemplate, testing::ValuesIn(allTemplates()),
                         [](const auto& named) { return "Template" + std::to_string(named.param.shape.id); });

// The kinds of the controls that the procedures use.
struct ControlKinds {
    unsigned short dialog;
    std::map<unsigned short, int> kinds;
};

const ControlKinds kUsedControls[] = {
    {100, {{101, JXW_LISTBOX}, {1, JXW_BUTTON}, {2, JXW_BUTTON}}},
    {102,
     {{103, JXW_LISTBOX},
      {104, JXW_BUTTON},
      {105, JXW_BUTTON},
      {106, JXW_BUTTON},
      {107, JXW_BUTTON},
      {108, JXW_BUTTON},
      {109, JXW_BUTTON}}},
    {110,
     {{111, JXW_CHECKBOX}, {112, JXW_CHECKBOX}, {113, JXW_EDIT}, {114, JXW_BUTTON}, {1, JXW_BUTTON}, {2, JXW_BUTTON}}},
    {115, {{117, JXW_LISTBOX}, {104, JXW_BUTTON}, {116, JXW_BUTTON}, {118, JXW_LABEL}, {119, JXW_BUTTON}}},
    {120,
     {{121, JXW_CHECKBOX},
      {122, JXW_RADIO},
      {123, JXW_RADIO},
      {124, JXW_RADIO},
      {125, JXW_RADIO},
      {126, JXW_RADIO},
      {127, JXW_RADIO},
      {128, JXW_BUTTON},
      {1, JXW_BUTTON},
      {2, JXW_BUTTON}}},
    {129, {{130, JXW_LISTBOX}, {131, JXW_BUTTON}, {1, JXW_BUTTON}, {2, JXW_BUTTON}}},
    {132, {{133, JXW_EDIT}, {134, JXW_LABEL}, {1, JXW_BUTTON}, {2, JXW_BUTTON}}},
    {136,
     {{137, JXW_LISTBOX},
      {138, JXW_LABEL},
      {139, JXW_LABEL},
      {140, JXW_LABEL},
      {141, JXW_LABEL},
      {142, JXW_LABEL},
      {1, JXW_BUTTON},
      {2, JXW_BUTTON}}},
    {143, {{144, JXW_LISTBOX}, {1, JXW_BUTTON}, {2, JXW_BUTTON}}},
    {145,
     {{146, JXW_LABEL},
      {147, JXW_LABEL},
      {148, JXW_LABEL},
      {149, JXW_LABEL},
      {150, JXW_LABEL},
      {151, JXW_LABEL},
      {152, JXW_LABEL},
      {153, JXW_LABEL},
      {1, JXW_BUTTON}}},
};

TEST(Templates, HoldEveryControlThatAProcedureUses) {
    for (const ControlKinds& row : kUsedControls) {
        SCOPED_TRACE(row.dialog);
        std::map<unsigned short, int> found;
        const HWND dialog = JXW_CreateDialog("odbcinst", row.dialog, 0, doNothing, nullptr);
        JxwControlInfo control{};
        for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index) {
            if (control.id != 0)
                found[control.id] = control.kind;
        }
        JXW_DestroyDialog(dialog);
        EXPECT_EQ(found, row.kinds);
    }
}

// These show data, in which "&" has no meaning.
TEST(Templates, MarkTheLabelsThatReceiveData) {
    std::set<unsigned short> marked;
    for (const Registered& each : allTemplates()) {
        for (const JxwControl* control = each.shape.controls; control->kind != JXW_NO_CONTROL; ++control) {
            if ((control->flags & JXW_PLAIN) != 0) {
                EXPECT_EQ(control->kind, JXW_LABEL);
                marked.insert(control->id);
            }
        }
    }
    EXPECT_EQ(marked, (std::set<unsigned short>{134, 138, 139, 140, 141, 142, 146, 147, 148, 149, 150, 151, 152, 153,
                                                jx::setup::kDriverText}));
}

TEST(Templates, SayThatTheAdvancedOptionsDoNothing) {
    for (const JxwControl& control : jx::kAdvancedOptionsControls) {
        if (control.kind == JXW_CHECKBOX || control.kind == JXW_GROUPBOX) {
            EXPECT_NE(std::string(control.text).find("no effect"), std::string::npos) << control.text;
        }
    }
}

}  // namespace
