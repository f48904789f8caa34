// A C++ program that links the installed libraries: the installer object, the error list, the C++ side of the
// utilities. Usage: cpp_host
#include <jxdataresource.h>
#include <jxerrors.h>
#include <jxini.h>
#include <jxmemory.h>
#include <jxprofile.h>
#include <jxtasks.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "host.h"

int host_failures;

namespace {

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}
std::string textOf(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

void useInstallerObject() {
    CHECK(SQLWritePrivateProfileString("ODBC Data Sources", "Sales", "Sample Driver", ".odbc.ini"));
    OdbcIns ins;
    CHECK(ins.entryCount == 0 && ins.entries == nullptr && ins.dataSourceAdded == 0 && ins.hasDefault == 0);
    CHECK(ins.ResetData(ResetAll) == 0);
    CHECK(ins.GetDataSourceNames() == 0 && ins.GetDriverNames() == 0 && ins.ConcatenateNames() == 0);
    CHECK(ins.entryCount == 1 && textOf(ins.entries[0].display) == "Sales (Sample Driver)");
    CHECK(ins.jxSQLValidDSN("Sales") == 1);
    CHECK(ins.SQLRemoveDefaultDataSource() == 1);
    CHECK(ins.ResetData(ResetKeepAddedFlag) == 0 && ins.entryCount == 0);
}

void useErrorList() {
    CHECK(addError(58) != nullptr && addError(7, bytes("own text")) != nullptr && addWarning(55) != nullptr);
    CHECK(JxErrorKeeper::count() == 3);
    CHECK(appendTextToErrorAtPos(55, 0) == JxErrorKeeper::errorAt(0));
    CHECK(appendTextToLastError(56) == JxErrorKeeper::errorAt(2));
    CHECK(JxErrorKeeper::errorAt(2)->type() == ErrorTypeWarning && JxErrorKeeper::errorAt(2)->number() == 55);
    CHECK(textOf(JxErrorKeeper::errorAt(1)->text()) == "own text");
    CHECK(JxErrorKeeper::appendToLastError(bytes("!")) != nullptr);
    CHECK(JxErrorKeeper::add(nullptr) == nullptr);
    CHECK(mdsGetPerThreadData(PerThreadErrors) == JxErrorKeeper::list());
    JxErrorKeeper::clear();
    CHECK(JxErrorKeeper::count() == 0 && appendTextToLastError(55) == nullptr);
}

// A node class of the program, released by the list.
class Node : public JxObject {
public:
    explicit Node(int& alive) : alive_(alive) { ++alive_; }
    ~Node() override { --alive_; }

private:
    int& alive_;
};

void useLists() {
    int alive = 0;
    JxList list;
    Node* const node = new Node(alive);
    CHECK(list.append(node) == node && list.count() == 1 && list.getNodeAtPos(0) == node);
    CHECK(list.getNodeAtPos(1) == nullptr && node->compare(node) == 0);
    CHECK(list.append(new JxDataResource(55)) != nullptr && list.count() == 2);
    list.clear();
    CHECK(alive == 0 && list.count() == 0);
}

void useTexts() {
    JxParamString sentence;
    CHECK(sentence.initialize(bytes("Cannot load %1.")) == 1 && sentence.setParam(bytes("libx.so")) == 1);
    CHECK(textOf(sentence.text()) == "Cannot load libx.so." && sentence.length() == 20);
    const unsigned char* const list = bytes("DSN=Sales");
    CHECK(strFind(list, static_cast<unsigned char>('=')) == list + 3 && strFind(list, bytes("Sales")) == list + 4);
    unsigned long number = 0;
    unsigned char digits[21] = "";
    CHECK(convert(bytes("42"), &number) == 1 && number == 42);
    CHECK(convert(digits, sizeof digits, 7, 2) == 2 && textOf(digits) == "07");
}

void useProfiles(const std::string& file) {
    unsigned char value[8] = "";
    CHECK(jxWritePrivateProfileString(bytes("A"), bytes("b"), bytes("c"), bytes(file.c_str())) == 1);
    CHECK(jxGetPrivateProfileString(bytes("A"), bytes("b"), nullptr, value, 8, bytes(file.c_str())) == 1);
    CHECK(textOf(value) == "c");
    JxIniFileCache* const cache = jxPrivateProfileInit(bytes(file.c_str()));
    CHECK(jxWritePrivateProfileString(bytes("A"), bytes("b"), bytes("de"), cache) == 1);
    CHECK(jxGetPrivateProfileString(bytes("A"), bytes("b"), nullptr, value, 8, cache) == 2);
    jxPrivateProfileTerm(cache);
    CHECK(textOf(value) == "de");
}

}  // namespace

int main() {
    char folder[] = "/tmp/jxodbc-host-XXXXXX";
    if (mkdtemp(folder) == nullptr)
        return 2;
    setenv("HOME", folder, 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    const std::string own = std::string(folder) + "/own.ini";
    useInstallerObject();
    useErrorList();
    useLists();
    useTexts();
    useProfiles(own);
    CHECK(std::remove(own.c_str()) == 0);
    CHECK(std::remove((std::string(folder) + "/.odbc.ini").c_str()) == 0);
    CHECK(std::remove(folder) == 0);
    return host_failures == 0 ? 0 : 1;
}
