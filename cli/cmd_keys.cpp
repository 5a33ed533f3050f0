// orvan keys: browse the opening tree of a game file: a key, its line, and its
// children with their names and game counts.
#include <fmt/format.h>

#include <memory>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "key_database.h"
#include "table.h"

namespace orvan_cli {

namespace {

void PrintKey(int32_t key)
{
    const KeySummary summary = DescribeKey(key);
    fmt::print("key {}  {}  {}\n", key, summary.code.empty() ? "-" : summary.code, summary.name);
    const std::string line = KeyLineText(key);
    if (!line.empty())
        fmt::print("  line: {}\n", line);
    fmt::print("  games: {} filed here, {} with the keys below\n", summary.data.gameCount, summary.data.subtreeGames);

    std::vector<int32_t> children(static_cast<size_t>(std::max(0, summary.data.childCount)));
    const int32_t count = children.empty() ? 0 : OvGetChildKeys(key, children.data(), static_cast<int32_t>(children.size()));
    if (count <= 0)
        return;
    Table table{{"Key", "Code", "Name", "Games", "Subtree"}, {}};
    for (int32_t i = 0; i < count; ++i) {
        const KeySummary child = DescribeKey(children[static_cast<size_t>(i)]);
        table.rows.push_back({std::to_string(child.key), child.code, child.name, std::to_string(child.data.gameCount),
                              std::to_string(child.data.subtreeGames)});
    }
    fmt::print("\n");
    PrintTable(stdout, table);
}

}  // namespace

Command AddKeysCommand(CLI::App& root)
{
    struct Options {
        std::string gameFile;
        std::string key;
    };
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("keys", "Browse the opening tree: a key, its children, game counts");
    app->add_option("FILE", options->gameFile, "The game file whose opening tree is shown")->required();
    app->add_option("KEY", options->key, "A key number or an ECO code such as B90 (default: the root)");
    app->footer("The default opening tree of a game file is built with 'ovkey-eco-tree FILE'.\n"
                "Games imported while a game file has its tree are filed under its keys.");
    return {app, [options] {
                const KeyDatabase database(options->gameFile, true);
                const std::vector<int32_t> keys =
                    options->key.empty() ? std::vector<int32_t>{OvGetFirstKey(0, OV_KEYORDER_TREE)} : FindKeys(options->key);
                if (keys.front() == 0)
                    throw CliError(kExitBadInput, options->gameFile + ": the opening tree is empty");
                for (size_t i = 0; i < keys.size(); ++i) {
                    if (i > 0)
                        fmt::print("\n");
                    PrintKey(keys[i]);
                }
                return 0;
            }};
}

}  // namespace orvan_cli
