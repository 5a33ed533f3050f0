// Header queries written on the command line: conditions like "white=Müller",
// "elo>=2500", "event~Open", "date<1990", all of which must hold, and the word
// "or" between up to three such groups.
#ifndef ORVAN_CLI_QUERY_TEXT_H
#define ORVAN_CLI_QUERY_TEXT_H

#include <string>
#include <string_view>
#include <vector>

#include "orvan.h"

namespace orvan_cli {

// Fills the conditions of `query` (kind QueryHeader) from `words` (UTF-8).
// Throws CliError (usage) naming the condition and what is wrong with it.
void ParseQueryWords(const std::vector<std::string>& words, sQuery& query);

// Tells the person on standard error about each word with letters beyond
// ASCII, which the store's header comparison may never match (ü, ä, é among
// them), with the way round.
void NoteWordsBeyondAscii(const std::vector<std::string>& words);

// The help text that lists the fields and operators.
std::string QuerySyntaxHelp();

}  // namespace orvan_cli

#endif
