#pragma once
// The few things the store needs of SQLite, with failures as exceptions.
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "registry/store/RawValue.h"

struct sqlite3;
struct sqlite3_stmt;

namespace brenvik::sqlite {

class Error : public std::runtime_error {
public:
    Error(int resultCode, const std::string& message, int systemError = 0)
        : std::runtime_error(message), code(resultCode & 0xFF), extended(resultCode), system(systemError) {}
    int code, extended;
    int system;   // what the host's file operation answered; 0: none was asked
};

// A prepared statement, kept for many uses. Each use goes through run(), which gives it back clean at its end.
class Statement {
public:
    Statement(sqlite3* database, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    class Use {
    public:
        explicit Use(Statement& statement) : s_(statement.handle_) {}
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        // Bound texts and bytes must live until the use ends.
        Use& bind(int index, std::int64_t number);
        Use& bind(int index, std::string_view text);
        Use& bindBytes(int index, const void* bytes, std::size_t size);
        Use& bindNull(int index);
        bool step();   // true: a row is there
        std::int64_t number(int column) const;
        std::string text(int column) const;
        Bytes bytes(int column) const;
        void text(int column, std::string& into) const;
        void bytes(int column, Bytes& into) const;
        void blob(int column, std::string& into) const;
        bool isNull(int column) const;

    private:
        sqlite3_stmt* s_;
    };
    Use run() { return Use(*this); }

private:
    sqlite3_stmt* handle_ = nullptr;
};

class Database {
public:
    Database(const std::string& fileOrUri, int flags);
    sqlite3* handle() const { return handle_.get(); }
    void execute(const char* sql);
    std::int64_t number(const char* sql);
    std::string text(const char* sql);

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace brenvik::sqlite
