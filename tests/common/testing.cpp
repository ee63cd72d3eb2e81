#include "common/testing.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zebtest {

static std::string slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

Run run(const std::string& command) {
  char dir[] = "/tmp/zebtestXXXXXX";
  Run r;
  if (!mkdtemp(dir)) return r;
  const std::string o = std::string(dir) + "/out", e = std::string(dir) + "/err";
  const std::string cmd = "( " + command + " ) > " + o + " 2> " + e + " < /dev/null";
  const int st = std::system(cmd.c_str());
  r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
  r.out = slurp(o);
  r.err = slurp(e);
  std::remove(o.c_str());
  std::remove(e.c_str());
  rmdir(dir);
  return r;
}

std::string prog(const std::string& name) {
  const char* d = std::getenv("ZEB_TEST_PROGS");
  return std::string(d ? d : ZEB_TEST_PROGS) + "/" + name;
}

std::vector<std::vector<std::string>> read_table(const std::string& name) {
  std::ifstream f(std::string(ZEB_TEST_DATA) + "/" + name);
  std::vector<std::vector<std::string>> rows;
  std::string line;
  while (std::getline(f, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    std::vector<std::string> row;
    std::string w;
    while (s >> w) row.push_back(w);
    if (!row.empty()) rows.push_back(row);
  }
  return rows;
}

static int g_saved = -1;
static std::string g_path;

std::string capture_begin() {
  std::fflush(stdout);
  char path[] = "/tmp/zebcapXXXXXX";
  const int fd = mkstemp(path);
  g_path = path;
  g_saved = dup(1);
  dup2(fd, 1);
  close(fd);
  return g_path;
}

std::string capture_end() {
  std::fflush(stdout);
  dup2(g_saved, 1);
  close(g_saved);
  std::string s = slurp(g_path);
  std::remove(g_path.c_str());
  return s;
}

}  // namespace zebtest
