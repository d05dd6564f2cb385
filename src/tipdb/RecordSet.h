#pragma once
// A static, client-side, read-only record set: the rows that a statement answered, and a place among them. Fields are
// addressed by ordinal. Whoever reads without a current row gets NumberedError 3021, a null where a value is needed 94,
// a number too wide for its type 6, a text that is no number 13, an ordinal out of range 3265.
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "frame/Errors.h"
#include "tipdb/Table.h"

namespace brenvik {

class RecordSet {
public:
    enum State : int { Closed = 0, IsOpen = 1 };

    RecordSet() = default;
    RecordSet(std::string source, std::shared_ptr<const Table> rows) : source_(std::move(source)), rows_(std::move(rows)) {}

    int State() const { return rows_ ? IsOpen : Closed; }
    const std::string& Source() const { return source_; }  // the statement
    void Close() { rows_.reset(); }

    std::int64_t RecordCount() const;
    std::size_t FieldCount() const { return openRows().columns().size(); }
    bool atBOF() const;  // before the first row: only without rows, since nothing moves backward
    bool atEOF() const;  // behind the last row
    void MoveFirst();
    void MoveNext();
    void MoveLast();

    // From the current row on, this one included, to the first whose field equals the value exactly, or to EOF; what a walk
    // with MoveNext would find, by an index.
    void moveToText(int ordinal, std::string_view value);
    void moveToNumber(int ordinal, std::int64_t value);

    bool isNull(int ordinal) const;
    bool isNullOrEmpty(int ordinal) const;
    std::string text(int ordinal) const;           // a number as decimal text
    std::string textOrEmpty(int ordinal) const;    // null gives the empty text
    std::int64_t wholeNumber(int ordinal) const;
    bool flag(int ordinal) const;

    template <class T> T number(int ordinal) const {
        const std::int64_t value = wholeNumber(ordinal);
        if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
            fail(errnum::Overflow, ordinal, "Überlauf");
        return static_cast<T>(value);
    }
    template <class T> T numberOrZero(int ordinal) const { return isNull(ordinal) ? T{0} : number<T>(ordinal); }

private:
    const Table& openRows() const;
    const Cell& field(int ordinal) const;
    std::size_t columnOf(int ordinal) const;
    [[noreturn]] void fail(std::int32_t number, int ordinal, const char* reason) const;   // names table, row and column

    std::string source_;
    std::shared_ptr<const Table> rows_;
    std::size_t row_ = 0;
};

}  // namespace brenvik
