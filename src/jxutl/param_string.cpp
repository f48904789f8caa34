// Texts with numbered places that are filled one after another.
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <jxerrors.h>

struct JxParamString::State {
    std::string pattern;
    std::vector<std::string> params;
    std::string text;  // the pattern with the params in their places
};

namespace {

// A place in a pattern: the number after a %, and how many bytes both take. Number 0: not a place.
struct Place {
    std::size_t number = 0;
    std::size_t length = 0;
};

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

Place placeAt(std::string_view pattern, std::size_t percent) {
    constexpr std::size_t kMostDigits = 9;  // always fit the number
    std::size_t end = percent + 1;
    Place place;
    while (end < pattern.size() && isDigit(pattern[end])) {
        if (end - percent > kMostDigits)
            return {};
        place.number = place.number * 10 + static_cast<std::size_t>(pattern[end] - '0');
        ++end;
    }
    if (end == percent + 1 || pattern[percent + 1] == '0')
        return {};
    place.length = end - percent;
    return place;
}

std::string filled(std::string_view pattern, const std::vector<std::string>& params) {
    std::string text;
    std::size_t from = 0;
    for (std::size_t at = pattern.find('%'); at != std::string_view::npos; at = pattern.find('%', at + 1)) {
        const Place place = placeAt(pattern, at);
        if (place.number == 0 || place.number > params.size())
            continue;
        text.append(pattern.substr(from, at - from)).append(params[place.number - 1]);
        from = at + place.length;
    }
    return text.append(pattern.substr(from));
}

std::string copyOf(const unsigned char* text) {
    return text != nullptr ? std::string(reinterpret_cast<const char*>(text)) : std::string();
}

}  // namespace

JxParamString::JxParamString() : state_(new (std::nothrow) State) {}

JxParamString::~JxParamString() {
    delete state_;
}

int JxParamString::initialize(const unsigned char* pattern) {
    if (state_ == nullptr)
        state_ = new (std::nothrow) State;
    if (state_ == nullptr)
        return 0;
    try {
        std::string copy = copyOf(pattern);
        std::string shown = copy;
        *state_ = State{std::move(copy), {}, std::move(shown)};
        return 1;
    } catch (const std::bad_alloc&) {
        *state_ = State();
        return 0;
    }
}

int JxParamString::setParam(const unsigned char* text) {
    if (state_ == nullptr && initialize(nullptr) == 0)
        return 0;
    try {
        state_->params.push_back(copyOf(text));
    } catch (const std::bad_alloc&) {
        return 0;
    }
    try {
        state_->text = filled(state_->pattern, state_->params);
        return 1;
    } catch (const std::bad_alloc&) {
        state_->params.pop_back();
        return 0;
    }
}

const unsigned char* JxParamString::text() const {
    static constexpr unsigned char kEmpty[] = {0};
    return state_ != nullptr ? reinterpret_cast<const unsigned char*>(state_->text.c_str()) : kEmpty;
}

std::size_t JxParamString::length() const {
    return state_ != nullptr ? state_->text.size() : 0;
}
