// The program as the operating system runs it: where it lies, and what asks it to end.
#pragma once

#include <string>
#include <vector>

namespace vantrel::os {

/// The words behind the program's name, UTF-8; `argc` and `argv` are those of main.
std::vector<std::string> Arguments(int argc, char** argv);

/// The folder of the program file, without a separator at its end.
std::string ProgramFolder();

/// From now on a file that passes the user's limit fails its write, as a full disk does, where it would end the
/// program.
void FailOversizeWrites();

/// From now on the system's requests to end do not end the program but make a descriptor readable, which is returned;
/// -1 where the system has none but those that it sends to windows. To be called once.
int WatchEndRequests();

/// Takes the requests that made the descriptor readable.
void TakeEndRequests();

/// Hands `address` to the system's command interpreter, as "cmd.exe /c start ADDRESS", minimised, without waiting for
/// it. False where there is no such interpreter.
bool OpenByInterpreter(const std::string& address);

}  // namespace vantrel::os
