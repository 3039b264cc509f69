// The work code object of the host's billing library. The sync creates one per source work
// code, gives it its kind and calls its initial operation; it stores nothing by itself.
#pragma once

#include <string>
#include <string_view>

namespace lf {

class WorkCodeObject {
 public:
  virtual ~WorkCodeObject() = default;
  virtual void setWorkCodeKind(int kind) = 0;
  virtual void initialize() = 0;
  virtual void setWorkCodeName(std::string_view name) = 0;
};

// The stand-alone host's work code: keeps its kind and name in memory.
class PracticeWorkCode : public WorkCodeObject {
 public:
  void setWorkCodeKind(int kind) override { kind_ = kind; }
  void initialize() override { name_.clear(); }
  void setWorkCodeName(std::string_view name) override { name_ = name; }
  int kind() const { return kind_; }
  const std::string& name() const { return name_; }

 private:
  int kind_ = 0;
  std::string name_;
};

}  // namespace lf
