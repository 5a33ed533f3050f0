#include "frame/index_path.h"

#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view IndexDirectoryName = "OvIndex/";

}  // namespace

int32_t IndexPathOfGamefile(char* dest, const char* path)
{
    const std::string_view source = path != nullptr ? path : "";
    const size_t separator = source.rfind('/');
    const std::string_view kept =
        separator == std::string_view::npos ? source : source.substr(0, separator + 1);
    const std::string_view appended =
        separator == std::string_view::npos ? std::string_view("") : IndexDirectoryName;

    if (kept.size() + appended.size() >= static_cast<size_t>(IndexPathSize)) {
        dest[0] = '\0';
        return IndexPathTooLong;
    }
    std::memcpy(dest, kept.data(), kept.size());
    std::memcpy(dest + kept.size(), appended.data(), appended.size());
    dest[kept.size() + appended.size()] = '\0';
    return separator == std::string_view::npos ? IndexPathNoSeparator : IndexPathBuilt;
}
