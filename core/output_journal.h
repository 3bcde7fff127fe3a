// What a task on another thread prints, kept so that the run's own thread prints it in its turn,
// and what it writes, noted so that it can be taken back. While a JournalScope lives on a thread,
// the console (text/console.h) records its text into the scope's journal instead of printing it;
// Dir_prepare and ResultFile (fsutil/) act at once and note the directories they make and the
// files they open, so that a task whose output must be done again in the order of a run on one
// thread (after an error: a full disk, a file-size limit) can remove them first.
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
    std::string path;  // of a directory made or a file opened
    std::string text;  // printed
  };

  // Console text, joined to the text recorded just before.
  void Text(std::string_view text);
  void Directory(const std::string& path);
  void File(const std::string& path);
  const std::vector<Entry>& Entries() const { return entries_; }

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
