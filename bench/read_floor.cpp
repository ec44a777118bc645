// halvard-read-floor DIR LIST: reads every price file of a watch list once, as plainly as C
// can (open, read into one buffer, close), and prints the bytes read. The time it takes is the
// floor under any run over the list: bench/compare.sh sets the runs against it.

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: halvard-read-floor DIR LIST\n");
    return 2;
  }
  const std::string folder = argv[1];
  std::ifstream list(argv[2]);
  std::vector<char> buffer(1 << 20);
  long long bytes = 0;
  int files = 0;
  for (std::string symbol; std::getline(list, symbol);) {
    if (!symbol.empty() && symbol.back() == '\r') symbol.pop_back();
    if (symbol.empty()) continue;
    const int fd = ::open((folder + "/" + symbol + ".txt").c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) continue;
    for (ssize_t n; (n = ::read(fd, buffer.data(), buffer.size())) > 0;) bytes += n;
    ::close(fd);
    ++files;
  }
  std::printf("%d files, %lld bytes\n", files, bytes);
  return 0;
}
