#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "frame/index_path.h"

namespace {

struct IndexPathCase {
    std::string path;
    int32_t result;
    std::string indexPath;
};

// The buffer has room beyond IndexPathSize, filled with a mark that must stay.
std::string BuildIndexPath(const char* path, int32_t& result)
{
    char dest[IndexPathSize + 40];
    std::memset(dest, '#', sizeof dest);
    result = IndexPathOfGamefile(dest, path);
    for (size_t i = IndexPathSize; i < sizeof dest; ++i)
        EXPECT_EQ(dest[i], '#') << "written past the buffer at " << i;
    return std::string(dest, strnlen(dest, IndexPathSize));
}

TEST(IndexPath, DirectoryOfTheGameFileGetsOvIndex)
{
    const std::string dir250 = "/" + std::string(249, 'd');
    for (const IndexPathCase& c : {
             IndexPathCase{"/data/games/big.ovg", IndexPathBuilt, "/data/games/OvIndex/"},
             IndexPathCase{"/big.ovg", IndexPathBuilt, "/OvIndex/"},
             IndexPathCase{"rel/dir/", IndexPathBuilt, "rel/dir/OvIndex/"},
             IndexPathCase{"a/b/c.d/e", IndexPathBuilt, "a/b/c.d/OvIndex/"},
             IndexPathCase{"big.ovg", IndexPathNoSeparator, "big.ovg"},
             IndexPathCase{"", IndexPathNoSeparator, ""},
             // 251 + 8 characters fill the buffer to its terminator.
             IndexPathCase{dir250 + "/x.ovg", IndexPathBuilt, dir250 + "/OvIndex/"},
             IndexPathCase{dir250 + "d/x.ovg", IndexPathTooLong, ""},
             IndexPathCase{std::string(259, 'n'), IndexPathNoSeparator, std::string(259, 'n')},
             IndexPathCase{std::string(260, 'n'), IndexPathTooLong, ""},
             // A long file name does not matter, only its directory.
             IndexPathCase{"/d/" + std::string(1000, 'f'), IndexPathBuilt, "/d/OvIndex/"},
         }) {
        int32_t result = 99;
        EXPECT_EQ(BuildIndexPath(c.path.c_str(), result), c.indexPath) << c.path;
        EXPECT_EQ(result, c.result) << c.path;
    }
    int32_t result = 99;
    EXPECT_EQ(BuildIndexPath(nullptr, result), "") << "null is an empty path";
    EXPECT_EQ(result, IndexPathNoSeparator);
}

}  // namespace
