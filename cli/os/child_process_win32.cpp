#include <windows.h>

#include <atomic>
#include <cstdio>

#include "cli/os/child_process.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

std::atomic<HANDLE> running{nullptr};
std::atomic<bool> ended{false};  // by endChildProcess()

// One argument as the C runtime takes it apart again: quoted, with the backslashes before a quote
// doubled.
std::wstring quoted(const std::string& argument) {
  std::wstring result = L"\"";
  std::size_t backslashes = 0;
  const std::filesystem::path wide = pathOf(argument);
  for (wchar_t c : wide.native()) {
    if (c == L'"') result.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    result += c;
  }
  result.append(backslashes, L'\\');
  return result + L"\"";
}

[[noreturn]] void fail(const char* call) {
  throw Failure(ExitStatus::Failed, std::string("no process can be started: ") + call +
                                        " failed (error " + std::to_string(GetLastError()) + ")");
}

// A file that a child can write to, gone when it is closed.
HANDLE openOutput() {
  wchar_t folder[MAX_PATH + 1], name[MAX_PATH + 1];
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"vtc", 0, name)) {
    fail("GetTempFileNameW");
  }
  const HANDLE file =
      CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  &inherited, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) fail("CreateFileW");
  return file;
}

std::string contents(HANDLE file) {
  std::string text;
  char part[4096];
  DWORD got = 0;
  SetFilePointer(file, 0, nullptr, FILE_BEGIN);
  while (ReadFile(file, part, sizeof part, &got, nullptr) && got > 0)
    text.append(part, got);
  return text;
}

// `command` begins with the program: a path, or a name to look up.
ChildResult run(std::wstring command, const std::vector<std::string>& arguments, int limitSeconds) {
  for (const std::string& argument : arguments)
    command += L" " + quoted(argument);

  const HANDLE output = openOutput();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process)) {
    CloseHandle(output);
    fail("CreateProcessW");
  }
  running = process.hProcess;
  ChildResult result;
  const DWORD limit = static_cast<DWORD>(limitSeconds) * 1000;
  if (WaitForSingleObject(process.hProcess, limit) == WAIT_TIMEOUT) {
    TerminateProcess(process.hProcess, 1);
    WaitForSingleObject(process.hProcess, INFINITE);
    result.failure = "took longer than " + std::to_string(limitSeconds) + " seconds";
  } else {
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    if (status >= 0xC0000000) {
      char text[32];
      std::snprintf(text, sizeof text, "ended by 0x%08lX", status);
      result.failure = text;
    } else {
      result.status = static_cast<int>(status);
    }
  }
  running = nullptr;
  while (ended)
    Sleep(1000);  // the process ends, too, and what became of the child is no result
  result.output = contents(output);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  CloseHandle(output);
  return result;
}

}  // namespace

void endChildProcess() {
  ended = true;
  if (const HANDLE child = running) TerminateProcess(child, 1);
}

ChildResult runSelf(const std::vector<std::string>& arguments, int limitSeconds) {
  std::wstring program(32768, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
  return run(L"\"" + program + L"\"", arguments, limitSeconds);
}

ChildResult runTool(const std::string& program, const std::vector<std::string>& arguments,
                    int limitSeconds) {
  return run(quoted(program), arguments, limitSeconds);
}

}  // namespace vellumtide::cli
