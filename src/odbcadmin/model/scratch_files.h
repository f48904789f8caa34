// Letting a call that writes the user's two files by itself change the files of any scope, or show what it would.
//
//     const ChangeResult result = changeByCopies(way, [&](const ScratchFiles& copies) { SQLInstallODBC(...); });
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/model/config_file.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

// ScratchFiles: copies of two files, in a directory of their own that only this user can read. While the object lives
// the libraries take the copies for the user's files; a process that is ended by SIGHUP, SIGINT, SIGQUIT or SIGTERM
// meanwhile leaves none behind. One at a time: it sets ODBCINI and ODBCINSTINI of the process, and the four signals.
class ScratchFiles {
public:
    struct Original {
        FileKind kind;
        std::string path;
        std::string text;
    };

    explicit ScratchFiles(std::vector<Original> originals);
    ~ScratchFiles();
    ScratchFiles(const ScratchFiles&) = delete;
    ScratchFiles& operator=(const ScratchFiles&) = delete;

    // Why the copies could not be made.
    const Reason& trouble() const { return trouble_; }

    // Makes the text of the copy of that kind the file's, an empty one where there is none.
    void takeInto(FileChange& change, FileKind kind) const;

    // A sentence about a copy as one about the file that was copied.
    std::string inWordsOfOriginals(std::string sentence) const;

private:
    std::string pathOf(FileKind kind) const;
    bool copy(const Original& original) const;

    std::vector<Original> originals_;
    std::string directory_;
    std::vector<std::pair<std::string, std::string>> oldVariables_;
    Reason trouble_;
};

// Locks both files of the way's scope, calls work while the libraries see copies of them in their place, and then
// writes what became of the copies, the drivers first; new files get the mode that the scope's have. While work runs
// the copies are the user's files for the model, too.
// Failure  both are one file, a file cannot be locked, or not be copied: work is not called. One cannot be written:
// those before it stay.
ChangeResult changeByCopies(const ChangeWay& way, const std::function<void(const ScratchFiles& copies)>& work);

}  // namespace jx::model
