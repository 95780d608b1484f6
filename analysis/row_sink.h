// Where the row writers of summaries and configuration reports put their
// result objects, and where they look up further stored objects. In the
// product both are the database (DatabaseRows, DatabaseObjects); tests hand
// in lists. The writers take these as parameters so that what they write
// can be checked without a database.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "dbms/database.h"
#include "tql/id.h"
#include "tql/patch.h"
#include "tql/pattern.h"

class RowSink {
 public:
  virtual ~RowSink() = default;
  // A ReportResultFolder under `parent`; returns its id.
  virtual tql::id_t folder(const tql::id_t& parent, uint32_t folderType, const std::string& name,
                           const tql::id_t& origin) = 0;
  // A ReportResultRow under `parent`.
  virtual void row(const tql::id_t& parent, const std::string& label, const std::string& value,
                   const tql::id_t& origin) = 0;
  // A row from `object`'s property (its string, or the text form of another
  // kind). Absent or null: `defaultText` with `useDefault`, else no row.
  virtual void propertyRow(const tql::id_t& parent, const std::string& label,
                           const tql::patch_t& object, int32_t property, bool useDefault,
                           const std::string& defaultText, const tql::id_t& origin) = 0;
  // propertyRow without a default, with its debug lines.
  virtual void propertyRowIfSet(const tql::id_t& parent, const std::string& label,
                                const tql::patch_t& object, int32_t property,
                                const tql::id_t& origin) = 0;
};

class ObjectSource {
 public:
  virtual ~ObjectSource() = default;
  // select_one: the one result from `id` with `pattern`, or null.
  virtual std::unique_ptr<tql::patch_t> selectOne(const tql::id_t& id,
                                                  std::unique_ptr<tql::pattern_t> pattern) = 0;
  // select from several ids; the results in the database's order.
  virtual std::vector<tql::patch_t> select(const std::list<tql::id_t>& ids,
                                           std::unique_ptr<tql::pattern_t> pattern) = 0;
  // get_object: the object with all properties when it is of `class_`, or null.
  virtual std::unique_ptr<tql::patch_t> getObject(const tql::id_t& id, int32_t class_) = 0;
};

// The result writers of result_objects.h.
class DatabaseRows final : public RowSink {
 public:
  // Creates in `db`, which outlives this.
  explicit DatabaseRows(dbms::Database& db) : db_(db) {}
  tql::id_t folder(const tql::id_t& parent, uint32_t folderType, const std::string& name,
                   const tql::id_t& origin) override;
  void row(const tql::id_t& parent, const std::string& label, const std::string& value,
           const tql::id_t& origin) override;
  void propertyRow(const tql::id_t& parent, const std::string& label, const tql::patch_t& object,
                   int32_t property, bool useDefault, const std::string& defaultText,
                   const tql::id_t& origin) override;
  void propertyRowIfSet(const tql::id_t& parent, const std::string& label,
                        const tql::patch_t& object, int32_t property,
                        const tql::id_t& origin) override;

 private:
  dbms::Database& db_;
};

// The typed operations of tql_operations.h on `db`, which outlives this;
// they raise errors::tql for a failed select.
class DatabaseObjects final : public ObjectSource {
 public:
  explicit DatabaseObjects(dbms::Database& db) : db_(db) {}
  std::unique_ptr<tql::patch_t> selectOne(const tql::id_t& id,
                                          std::unique_ptr<tql::pattern_t> pattern) override;
  std::vector<tql::patch_t> select(const std::list<tql::id_t>& ids,
                                   std::unique_ptr<tql::pattern_t> pattern) override;
  std::unique_ptr<tql::patch_t> getObject(const tql::id_t& id, int32_t class_) override;

 private:
  dbms::Database& db_;
};
