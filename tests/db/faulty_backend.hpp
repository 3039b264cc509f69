// A backend for tests that refuses what a test tells it to, over a real one: the next
// COMMITs, or the statements that begin with a given text. A refused COMMIT leaves the
// transaction open, as a COMMIT that fails on a deferred constraint does.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/failure.hpp"
#include "db/sql_backend.hpp"

namespace lf::testing {

class FaultyBackend : public SqlBackend {
 public:
  explicit FaultyBackend(std::unique_ptr<SqlBackend> inner = makeSqliteBackend())
      : inner_(std::move(inner)) {}

  int commitsToRefuse = 0;       // the next this many COMMITs fail
  std::string refuseStatements;  // statements beginning with this text fail when run
  int commits = 0;               // COMMITs that went through

  SqlDialect dialect() const override { return inner_->dialect(); }
  bool hasRowid() const override { return inner_->hasRowid(); }
  std::string rowidName() const override { return inner_->rowidName(); }
  ConnectFailure connect(std::string_view location, const ConnectOptions& options,
                         std::string& message) override {
    return inner_->connect(location, options, message);
  }
  ConnectFailure finishConnect(std::string& message) override {
    return inner_->finishConnect(message);
  }
  void disconnect() override { inner_->disconnect(); }
  bool connected() const override { return inner_->connected(); }
  std::unique_ptr<SqlStatement> prepare(std::string_view sql) override {
    auto stmt = inner_->prepare(sql);
    if (refuseStatements.empty() || sql.substr(0, refuseStatements.size()) != refuseStatements)
      return stmt;
    return std::make_unique<Refused>(std::move(stmt));
  }
  void exec(std::string_view sql) override { inner_->exec(sql); }
  void begin() override { inner_->begin(); }
  void commit() override {
    if (commitsToRefuse > 0) {
      --commitsToRefuse;
      throw DatabaseFailure("COMMIT refused by the test");
    }
    inner_->commit();
    ++commits;
  }
  void rollback() override { inner_->rollback(); }
  bool inTransaction() override { return inner_->inTransaction(); }
  std::int64_t lastInsertKey() override { return inner_->lastInsertKey(); }
  std::int64_t changeCounter() override { return inner_->changeCounter(); }
  std::vector<SqlTableColumn> tableColumns(std::string_view table) override {
    return inner_->tableColumns(table);
  }
  bool hasTable(std::string_view table) override { return inner_->hasTable(table); }

 private:
  // A statement that fails when run.
  struct Refused : SqlStatement {
    explicit Refused(std::unique_ptr<SqlStatement> s) : inner(std::move(s)) {}
    void reset() override { inner->reset(); }
    void bindNull(int p) override { inner->bindNull(p); }
    void bindInteger(int p, std::int64_t v) override { inner->bindInteger(p, v); }
    void bindReal(int p, double v) override { inner->bindReal(p, v); }
    void bindText(int p, std::string_view v) override { inner->bindText(p, v); }
    bool step() override { throw DatabaseFailure("refused by the test"); }
    int columnCount() override { return inner->columnCount(); }
    SqlResultColumn columnInfo(int c) override { return inner->columnInfo(c); }
    SqlType type(int c) override { return inner->type(c); }
    std::int64_t integer(int c) override { return inner->integer(c); }
    double real(int c) override { return inner->real(c); }
    std::string_view text(int c) override { return inner->text(c); }
    bool readOnly() override { return inner->readOnly(); }
    std::unique_ptr<SqlStatement> inner;
  };
  std::unique_ptr<SqlBackend> inner_;
};

}  // namespace lf::testing
