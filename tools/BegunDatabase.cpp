#include "tools/BegunDatabase.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

namespace fs = std::filesystem;

BegunDatabase::BegunDatabase(fs::path file) : file_(std::move(file)) {
  const int made = open(file_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (made < 0)
    throw RuntimeError(ErrorNumber::pathNotFound,
                       concat("The folder cannot be written: ", file_.parent_path().string(), ": ",
                              std::generic_category().message(errno)));
  close(made);
}

BegunDatabase::~BegunDatabase() {
  std::error_code ignored;
  for (const char* ending : {"", "-journal", "-wal", "-shm"})
    fs::remove(file_.string() + ending, ignored);
}

std::string workgroupContent(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream)
    throw RuntimeError(ErrorNumber::pathNotFound,
                       "The workgroup file cannot be read: " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace bw
