#include "core/hLangText.h"

#include "host/mdl_CoreDevWrapper.h"

namespace fw {

namespace {

constexpr int kGerman = 7;

// Plain replace of every occurrence, scanning on after each inserted value so
// that a value is never searched again within the same step.
void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (auto pos = text.find(from); pos != std::string::npos;
         pos = text.find(from, pos + to.size()))
        text.replace(pos, from.size(), to);
}

int hostLanguage()
{
    // Errors are resumed: when the host cannot answer, the id stays 0, which is
    // one of the "every other id" values and so picks English, the language
    // that every text has.
    try {
        return GetCoreDevLanguage().GetLanguage();
    } catch (...) {
        return 0;
    }
}

} // namespace

std::string hLangText(const std::string& german, const std::string& english,
                      const std::vector<std::string>& values, int lowerBound)
{
    std::string text = hostLanguage() == kGerman ? german : english;
    long long index = lowerBound;
    for (const auto& value : values) {
        std::string placeholder = std::to_string(index++);
        placeholder.insert(placeholder.begin(), '{');
        placeholder.push_back('}');
        replaceAll(text, placeholder, value);
    }
    return text;
}

} // namespace fw
