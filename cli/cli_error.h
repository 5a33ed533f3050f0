// The errors of the orvan host: one line for a person, and the exit code that
// tells a script what went wrong.
#ifndef ORVAN_CLI_CLI_ERROR_H
#define ORVAN_CLI_CLI_ERROR_H

#include <stdexcept>
#include <string>

namespace orvan_cli {

// Exit codes of every command.
enum ExitCode : int {
    kExitOk = 0,
    kExitNoHits = 1,     // search or export found no game
    kExitUsage = 2,      // a bad argument: option, range, query, FEN
    kExitBadInput = 3,   // a file that is missing, unreadable or no game file
    kExitFailed = 4      // the work itself failed: a write, the library refused
};

// Thrown by a command; main prints "orvan <command>: <message>" and exits.
class CliError : public std::runtime_error {
public:
    CliError(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code)
    {
    }
    ExitCode Code() const { return code_; }

private:
    ExitCode code_;
};

}  // namespace orvan_cli

#endif
