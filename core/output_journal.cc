#include "core/output_journal.h"

namespace kcp {

namespace {

thread_local OutputJournal* current = nullptr;

}  // namespace

void OutputJournal::Text(std::string_view text) {
  if (entries_.empty() || entries_.back().kind != Kind::kText) {
    entries_.push_back(Entry{Kind::kText, std::string(), std::string()});
  }
  entries_.back().text.append(text);
}

void OutputJournal::Directory(const std::string& path) {
  entries_.push_back(Entry{Kind::kDirectory, path, std::string()});
}

void OutputJournal::File(const std::string& path) {
  entries_.push_back(Entry{Kind::kFile, path, std::string()});
}

OutputJournal* OutputJournal::Current() {
  return current;
}

JournalScope::JournalScope(OutputJournal& journal) : outer_(current) {
  current = &journal;
}

JournalScope::~JournalScope() {
  current = outer_;
}

}  // namespace kcp
