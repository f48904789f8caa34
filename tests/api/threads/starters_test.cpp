// The functions that start dialogs, called by several threads of one process.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <thread>
#include <vector>

namespace {

// The exported handles are not protected: only an open dialog may write them, and here none is open.
TEST(Starters, OfSeveralThreadsShareNothing) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round) {
                EXPECT_EQ(SQLCreateDataSource(77, nullptr), FALSE);
                EXPECT_EQ(SQLManageDataSources(77), 0);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(HWNDADDLG, 0U);
    EXPECT_EQ(HWNDDSDLG, 0U);
}

}  // namespace
