// Shared helpers of the test programs.
#pragma once

#include <string>
#include <vector>

namespace zebtest {

struct Run {
  int status = -1;     // exit status, or -1 when the child did not exit normally
  std::string out;     // standard output
  std::string err;     // standard error
};

// Runs a command in a child process through the shell and collects its
// exit status, standard output and standard error.
Run run(const std::string& command);

// The path of a test client program built beside the tests.
std::string prog(const std::string& name);

// Reads a whitespace-separated data file from tests/data, skipping lines
// that begin with '#'.
std::vector<std::vector<std::string>> read_table(const std::string& name);

// Captures what the library writes on Fortran unit 6 (the standard output
// file descriptor) while `body` runs.
template <class F>
std::string capture_stdout(F&& body);
std::string capture_begin();
std::string capture_end();

}  // namespace zebtest

template <class F>
std::string zebtest::capture_stdout(F&& body) {
  capture_begin();
  body();
  return capture_end();
}
