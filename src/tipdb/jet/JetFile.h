#pragma once
// The container level of a Jet 3 or Jet 4 database file in a buffer: header, password, page encoding, pages, rows on
// data pages, usage maps, long values. Time and memory are bounded by the size of the file, whatever stands in it.
#include <string>
#include <string_view>
#include <vector>

#include "tipdb/Slice.h"

namespace brenvik::jet {

class JetFile {
public:
    // Takes the whole file. Throws Damaged if this is no Jet 3 or Jet 4 database.
    explicit JetFile(std::string bytes);

    static bool looksLikeJet(std::string_view bytes);

    bool isJet4() const { return jet4_; }
    std::size_t pageSize() const { return pageSize_; }
    std::size_t pages() const { return bytes_.size() / pageSize_; }
    const std::string& password() const { return password_; }  // UTF-8, empty: none

    // Places in the page layouts that differ between the two formats.
    std::size_t rowCountOffset() const { return jet4_ ? 12 : 8; }

    enum PageType : std::uint8_t { DataPage = 1, DefinitionPage = 2, IndexPage = 3, IndexLeafPage = 4, UsageMapPage = 5 };
    Slice page(std::size_t number) const;                     // any page
    Slice page(std::size_t number, PageType expected) const;  // Damaged if it is another
    struct Row {
        Slice bytes;
        bool moved = false;    // the bytes are a pointer to the row's new place
        bool hidden = false;   // deleted, or a moved row at its new place
    };
    Row row(std::size_t pageNumber, std::size_t rowNumber) const;
    Slice reference(std::uint32_t pointer) const;  // page number << 8 | row number
    std::vector<std::uint32_t> usageMap(std::uint32_t pointer) const;  // page numbers, ascending, all inside the file

    // Content of a memo or OLE column, given its 12 byte header and what follows inside the row.
    std::vector<std::uint8_t> longValue(Slice column) const;
    std::string text(Slice bytes) const;
    std::string name(Slice bytes) const;

    // Everything decoded counts against a budget of a multiple of the file's size, so that pointers which lead to the
    // same bytes again and again come to an end.
    void spend(std::size_t amount) const;

private:
    Slice longValuePiece(std::uint32_t pointer) const;
    void readHeader();
    void decodePages(std::uint32_t databaseKey);

    std::uint8_t* at(std::size_t offset) { return reinterpret_cast<std::uint8_t*>(bytes_.data()) + offset; }

    std::string bytes_;
    bool jet4_ = false;
    std::size_t pageSize_ = 2048;
    std::string password_;
    mutable std::size_t budget_ = 0;
};

}  // namespace brenvik::jet
