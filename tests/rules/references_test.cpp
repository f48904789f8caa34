// Which names are references, and to which keys.
#include "rules/references.h"

#include <gtest/gtest.h>

#include "rules/secrets.h"

namespace jx::rules {
namespace {

TEST(References, AreKeysWithOneOfThreeSuffixesInAnyCase) {
    struct Row {
        const char* name;
        const char* key;
    };
    for (const Row& row : {Row{"PWD@file", "PWD"}, Row{"PWD@FILE", "PWD"}, Row{"Pass word @env", "Pass word"},
                           Row{"a@credential", "a"}, Row{"a@b@env", "a@b"}, Row{"@file", ""}, Row{"PWD", ""},
                           Row{"PWD@files", ""}, Row{"file", ""}, Row{"", ""}, Row{"PWD@ file", ""}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(referredKey(row.name), row.key);
    }
}

TEST(References, HaveTheKindOfTheirSuffix) {
    EXPECT_EQ(referenceOf("PWD@File"), Reference::file);
    EXPECT_EQ(referenceOf("PWD@env"), Reference::variable);
    EXPECT_EQ(referenceOf("PWD@Credential"), Reference::credential);
}

TEST(References, NeverStandForWhatNamesCodeOrCounts) {
    for (const char* key : {"Driver", "SETUP", "translator", "UsageCount", "PWD@file"})
        EXPECT_FALSE(mayBeReferred(key)) << key;
    for (const char* key : {"PWD", "Driver64", "Database"})
        EXPECT_TRUE(mayBeReferred(key)) << key;
}

TEST(References, AreNoSecretsThoughTheirKeysAre) {
    EXPECT_TRUE(isSecretKey("Password"));
    EXPECT_EQ(masked("Password@env", "VARIABLE"), "VARIABLE");
    EXPECT_EQ(masked("Password@credential", "sales"), "sales");
    EXPECT_EQ(maskedLine("Password@file=/run/secrets/sales"), "Password@file=/run/secrets/sales");
    EXPECT_EQ(masked("Options", "PWD=x@file"), "PWD=********");
}

}  // namespace
}  // namespace jx::rules
