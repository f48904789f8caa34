// The main program of the targets in ordinary builds: runs a target for every file of a folder and for a fixed number
// of changed copies of each.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kCopiesOfEach = 500;

void run(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

// Changer: makes random changes, the same in every run.
class Changer {
public:
    // A few times: removes a part, doubles a part or inserts a byte.
    std::string changed(std::string bytes) {
        for (std::size_t left = below(4) + 1; left > 0; --left)
            changeOnce(bytes);
        return bytes;
    }

private:
    void changeOnce(std::string& bytes) {
        using namespace std::string_view_literals;
        constexpr std::string_view kBytes = "[]=;#,\" \t\r\n!\0\x80\xEF\xBB\xBF\x41k"sv;
        const std::size_t at = below(bytes.size() + 1);
        const std::size_t length = std::min(below(8), bytes.size() - at);
        switch (below(4)) {
            case 0:
                bytes.erase(at, length);
                break;
            case 1:
                bytes.insert(below(bytes.size() + 1), bytes.substr(at, length));
                break;
            default:
                bytes.insert(at, 1, kBytes[below(kBytes.size())]);
        }
    }

    std::size_t below(std::size_t limit) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(state_ >> 33U) % limit;
    }

    std::uint64_t state_ = 1;
};

}  // namespace

int main(int count, char** arguments) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(count == 2 ? arguments[1] : ""))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    Changer changer;
    for (const auto& path : paths) {
        std::printf("%s\n", path.c_str());
        std::ifstream in(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        run(bytes);
        for (int copy = 0; copy < kCopiesOfEach; ++copy)
            run(changer.changed(bytes));
    }
    return paths.empty() ? 1 : 0;
}
