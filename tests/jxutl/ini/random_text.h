// Random texts that look like INI files, and others; the same in every run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace jx::ini::test {

// Random: numbers from a fixed seed.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15U + 1) {}

    // From 0 to below limit.
    std::size_t below(std::size_t limit) {
        state_ ^= state_ << 13U;
        state_ ^= state_ >> 7U;
        state_ ^= state_ << 17U;
        return static_cast<std::size_t>(state_ >> 11U) % limit;
    }

    bool oneIn(std::size_t count) { return below(count) == 0; }

    template <std::size_t count>
    std::string_view pick(const std::array<std::string_view, count>& choices) {
        return choices.at(below(count));
    }

private:
    std::uint64_t state_;
};

// Random bytes, among them many that have a meaning in INI files.
inline std::string randomBytes(Random& random, std::size_t size) {
    constexpr std::string_view kMeaning = "[]=;# \t\r\n\nab\xEF\xBB\xBF";
    std::string bytes;
    while (bytes.size() < size)
        bytes += random.oneIn(4) ? static_cast<char>(random.below(256)) : kMeaning[random.below(kMeaning.size())];
    return bytes;
}

// Few names, so that sections and keys occur several times; some differ only in case, some in blanks.
inline std::string_view randomSection(Random& random) {
    static constexpr std::array<std::string_view, 8> kNames = {"A",   "a",  " A ", "ODBC Data Sources",
                                                               "b]c", "[d", "",    "B"};
    return random.pick(kNames);
}
inline std::string_view randomKey(Random& random) {
    static constexpr std::array<std::string_view, 8> kNames = {"k",   "K", "Driver", " driver\t",
                                                               "x y", "A", "",       "long key name"};
    return random.pick(kNames);
}
inline std::string_view randomValue(Random& random) {
    static constexpr std::array<std::string_view, 8> kValues = {
        "", "1", " 2 ", "a=b", "[A]", "; no comment", "\"q\"", "/usr/lib/x.so"};
    return random.pick(kValues);
}

inline std::string randomLine(Random& random) {
    std::string line(random.below(3), random.oneIn(2) ? ' ' : '\t');
    switch (random.below(8)) {
        case 0:
        case 1:
            return line.append("[")
                .append(randomSection(random))
                .append("]")
                .append(random.oneIn(4) ? " ; comment]" : "");
        case 2:
            return line.append(random.oneIn(2) ? "; " : "#").append(randomKey(random)).append("=1");
        case 3:
            return line;
        case 4:
            return line.append(randomKey(random));
        case 5:
            return line.append(randomBytes(random, random.below(12)));
        default:
            return line.append(randomKey(random)).append(random.oneIn(2) ? "=" : " = ").append(randomValue(random));
    }
}

// A file with everything a file can have: a byte order mark, both line ends, no final line end, odd lines.
inline std::string randomFile(Random& random) {
    std::string text = random.oneIn(4) ? "\xEF\xBB\xBF" : "";
    const std::string_view lineEnd = random.oneIn(3) ? "\r\n" : "\n";
    for (std::size_t left = random.below(14); left > 0; --left) {
        text += randomLine(random);
        text += random.oneIn(12) ? "\n" : lineEnd;
    }
    while (!text.empty() && random.oneIn(4))
        text.pop_back();
    return text;
}

}  // namespace jx::ini::test
