// The pick lists and the rich-text box of the merge editor, as the merge engine drives them.
//
// The engine only adds entries with item data, clears and refreshes a list, and reads the
// cursor of the text box; the insertion itself is the text box's job. The in-memory
// versions stand in for the platform controls in the command line and in tests.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/variant.hpp"

namespace lf {

class ListBoxControl {
 public:
  virtual ~ListBoxControl() = default;
  virtual void AddItem(const std::string& text) = 0;
  // Index of the entry added last; -1 before any.
  virtual long NewIndex() const = 0;
  virtual long ItemData(long index) const = 0;
  virtual void setItemData(long index, long data) = 0;
  virtual void Clear() = 0;
  virtual void Refresh() = 0;
};

class RichTextBoxControl {
 public:
  virtual ~RichTextBoxControl() = default;
  // The cursor; null or non-numeric when the box cannot tell.
  virtual Variant SelStart() const = 0;
  // Inserts text at a position of the box (what the rich-text library's insertion does).
  virtual void insertText(const std::string& text, long position) = 0;
};

class MemoryListBox : public ListBoxControl {
 public:
  struct Entry {
    std::string text;
    long itemData = 0;
  };

  void AddItem(const std::string& text) override { entries_.push_back({text, 0}); }
  long NewIndex() const override { return static_cast<long>(entries_.size()) - 1; }
  long ItemData(long index) const override { return entries_.at(index).itemData; }
  void setItemData(long index, long data) override { entries_.at(index).itemData = data; }
  void Clear() override { entries_.clear(); }
  void Refresh() override { ++refreshCount_; }

  const std::vector<Entry>& entries() const { return entries_; }
  int refreshCount() const { return refreshCount_; }

 private:
  std::vector<Entry> entries_;
  int refreshCount_ = 0;
};

class MemoryRichTextBox : public RichTextBoxControl {
 public:
  Variant SelStart() const override { return selStart_; }
  void setSelStart(Variant position) { selStart_ = std::move(position); }
  // The position counts characters before the insertion point; past the end appends.
  void insertText(const std::string& text, long position) override {
    size_t at = position < 0 ? 0 : static_cast<size_t>(position);
    if (at > text_.size()) at = text_.size();
    text_.insert(at, text);
  }
  const std::string& text() const { return text_; }
  void setText(std::string text) { text_ = std::move(text); }

 private:
  std::string text_;
  Variant selStart_;
};

}  // namespace lf
