#include "query_text.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <fmt/format.h>

#include "cli_error.h"
#include "encoding.h"

namespace orvan_cli {

namespace {

enum class Form { Text, Number, Date, Result };

struct FieldName {
    std::string_view name;
    int32_t code;
    Form form;
};

constexpr std::array<FieldName, 22> kFields = {{
    {"player", QfPlayer, Form::Text},           {"country", QfCountry, Form::Text},
    {"elo", QfElo, Form::Number},               {"title", QfTitle, Form::Text},
    {"eco", QfKeycode, Form::Text},             {"result", QfResult, Form::Result},
    {"moves", QfMoves, Form::Number},           {"event", QfPlace, Form::Text},
    {"site", QfSite, Form::Text},               {"round", QfRound, Form::Number},
    {"date", QfDate, Form::Date},               {"number", QfLoadnumber, Form::Number},
    {"annotator", QfAnnotator, Form::Text},     {"remark", QfRemark, Form::Text},
    {"white", QfWhite, Form::Text},             {"black", QfBlack, Form::Text},
    {"whitecountry", QfWhiteCountry, Form::Text}, {"blackcountry", QfBlackCountry, Form::Text},
    {"whiteelo", QfWhiteElo, Form::Number},     {"blackelo", QfBlackElo, Form::Number},
    {"whitetitle", QfWhiteTitle, Form::Text},   {"blacktitle", QfBlackTitle, Form::Text},
}};

struct Operator {
    std::string_view text;
    int32_t textCode;    // for text fields, 0 = not allowed
    int32_t numberCode;  // for numbers, dates and results, 0 = not allowed
};

// Longest first, so that "!=" is not read as "!" and "=".
constexpr std::array<Operator, 10> kOperators = {{
    {"!^=", QopNotBeginsWith, 0},
    {"!~", QopNotContains, 0},
    {"!=", QopNotEquals, QopNotEquals},
    {"^=", QopBeginsWith, 0},
    {">=", 0, QopNotBeginsWith},
    {"<=", 0, QopContains},
    {"=", QopEquals, QopEquals},
    {"~", QopContains, 0},
    {"<", 0, QopBeginsWith},
    {">", 0, QopNotContains},
}};

[[noreturn]] void BadCondition(std::string_view word, const std::string& why)
{
    throw CliError(kExitUsage, "bad condition '" + std::string(word) + "': " + why);
}

const FieldName& FindField(std::string_view word, std::string_view name)
{
    for (const auto& field : kFields)
        if (field.name == name)
            return field;
    BadCondition(word, "unknown field '" + std::string(name) + "' (see orvan search --help)");
}

void ParseCondition(std::string_view word, sQueryCondition& condition)
{
    size_t at = 0;
    while (at < word.size() && std::strchr("!^=~<>", word[at]) == nullptr)
        ++at;
    if (at == word.size())
        BadCondition(word, "no operator (=, !=, ^=, !^=, ~, !~, <, <=, >, >=)");
    const std::string_view rest = word.substr(at);
    const Operator* op = nullptr;
    for (const auto& candidate : kOperators)
        if (rest.starts_with(candidate.text)) {
            op = &candidate;
            break;
        }
    if (op == nullptr)
        BadCondition(word, "unknown operator");
    const FieldName& field = FindField(word, word.substr(0, at));
    const int32_t code = field.form == Form::Text ? op->textCode : op->numberCode;
    if (code == 0 || (field.form == Form::Result && code != QopEquals && code != QopNotEquals))
        BadCondition(word, "operator '" + std::string(op->text) + "' does not fit field '" +
                               std::string(field.name) + "'");
    const std::string value = Utf8ToWindows1252(rest.substr(op->text.size()));
    if (value.size() >= OV_QUERY_VALUE_SIZE)
        BadCondition(word, "the value is longer than 63 characters");
    if (field.form == Form::Number && value.find_first_not_of("0123456789") != std::string::npos)
        BadCondition(word, "'" + value + "' is not a number");
    if (field.form == Form::Result && value != "1-0" && value != "0-1" && value != "1/2" && value != "*")
        BadCondition(word, "a result is 1-0, 0-1, 1/2 or *");
    condition.field = field.code;
    condition.op = code;
    std::memcpy(condition.value, value.c_str(), value.size() + 1);
}

}  // namespace

void ParseQueryWords(const std::vector<std::string>& words, sQuery& query)
{
    query.kind = QueryHeader;
    int group = 0, row = 0;
    for (const auto& word : words) {
        if (word == "or") {
            if (row == 0)
                throw CliError(kExitUsage, "bad query: 'or' needs conditions on both sides");
            if (++group == OV_QUERY_GROUPS)
                throw CliError(kExitUsage, "bad query: at most 3 groups joined by 'or'");
            row = 0;
            continue;
        }
        if (row == OV_QUERY_ROWS)
            throw CliError(kExitUsage, "bad query: at most 5 conditions in a group");
        ParseCondition(word, query.conditions[row++][group]);
    }
    if (!words.empty() && row == 0)
        throw CliError(kExitUsage, "bad query: 'or' needs conditions on both sides");
}

void NoteWordsBeyondAscii(const std::vector<std::string>& words)
{
    for (const auto& word : words)
        if (std::any_of(word.begin(), word.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
            fmt::print(stderr,
                   "note: '{}' has letters beyond ASCII, which header searches may not match; "
                   "its ASCII part with ~ finds them (white~ller for Müller)\n",
                   word);
}

std::string QuerySyntaxHelp()
{
    std::string help =
        "Conditions: FIELD OP VALUE, e.g. white~ller  elo>=2500  event~Open  date<1990\n"
        "  all conditions must hold; 'or' between groups (at most 3 groups of 5)\n"
        "  text operators: = != ^= (begins with) !^= ~ (contains) !~, case-blind\n"
        "  number and date operators: = != < <= > >=; results: = != with 1-0 0-1 1/2 *\n"
        "  fields:";
    for (const auto& field : kFields) {
        help += ' ';
        help += field.name;
    }
    return help + "\n  (player, country, elo, title: either player)";
}

}  // namespace orvan_cli
