// The exported calls that enter and remove data sources.
#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/arguments.h"
#include "api3/call.h"
#include "api3/data_source_entry.h"
#include "rules/sections.h"

using namespace jx::api3;

BOOL SQLValidDSN(LPCSTR lpszDSN) {
    return answerCall([&](ThreadState&) { return isValidDsn(lpszDSN); });
}

JX_ALSO_WITH_A(SQLValidDSN);

BOOL SQLValidDSNW(const SQLWCHAR* lpszDSN) {
    return answerCall([&](ThreadState&) {
        const std::optional<std::string> name = toUtf8(unitsOf(lpszDSN));
        return name && isValidDsn(name->c_str());
    });
}

BOOL SQLWriteDSNToIni(LPCSTR lpszDSN, LPCSTR lpszDriver) {
    return answerCall([&](ThreadState& state) {
        return areUtf8({lpszDSN, lpszDriver}) && enterDataSource(state, lpszDSN, lpszDriver);
    });
}

JX_ALSO_WITH_A(SQLWriteDSNToIni);

BOOL SQLWriteDSNToIniW(const SQLWCHAR* lpszDSN, const SQLWCHAR* lpszDriver) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszDSN, lpszDriver};
        return texts.areWhole() && enterDataSource(state, texts[0], texts[1]);
    });
}

BOOL SQLRemoveDSNFromIni(LPCSTR lpszDSN) {
    return answerCall([&](ThreadState& state) { return areUtf8({lpszDSN}) && removeDataSource(state, lpszDSN); });
}

JX_ALSO_WITH_A(SQLRemoveDSNFromIni);

BOOL SQLRemoveDSNFromIniW(const SQLWCHAR* lpszDSN) {
    return answerCall([&](ThreadState& state) {
        const WideTexts texts{lpszDSN};
        return texts.areWhole() && removeDataSource(state, texts[0]);
    });
}

BOOL SQLRemoveDefaultDataSource(void) {
    return answerCall([](ThreadState& state) { return removeDataSource(state, jx::rules::kDefault); });
}
