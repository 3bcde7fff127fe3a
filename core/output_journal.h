// What work on another thread prints and writes, kept in order so that the run's own thread can
// print and write it in its turn: console text, directories to prepare with "keep", whole files.
// While a JournalScope lives on a thread, the console (text/console.h), Dir_prepare with "keep"
// and Result_file (fsutil/) record into its journal instead of acting, so that printing and
// writing, and the errors they meet (a full disk), happen in the order of a run on one thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kcp {

class OutputJournal {
 public:
  enum class Kind { kText, kDirectory, kFile };
  struct Entry {
    Kind kind;
    std::string path;  // of a directory or a file
    std::string text;  // printed, or the whole content of a file
  };

  // Console text, joined to the text recorded just before.
  void Text(std::string_view text);
  void Directory(const std::string& path);
  void File(const std::string& path, std::string content);
  const std::vector<Entry>& Entries() const { return entries_; }
  void Clear() { entries_.clear(); }

  // The journal of the current thread's JournalScope; null outside one.
  static OutputJournal* Current();

 private:
  std::vector<Entry> entries_;
};

class JournalScope {
 public:
  explicit JournalScope(OutputJournal& journal);
  ~JournalScope();
  JournalScope(const JournalScope&) = delete;
  JournalScope& operator=(const JournalScope&) = delete;

 private:
  OutputJournal* outer_;
};

}  // namespace kcp
