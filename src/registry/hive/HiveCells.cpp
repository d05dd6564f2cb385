#include "registry/hive/HiveCells.h"

#include <algorithm>

namespace brenvik {

using namespace hivefmt;

HiveCells::HiveCells(ByteSpan file, HiveFindings& findings) : file_(file) {
    checkBase(findings);
    begins_ = CellBits(binsSize_);
    for (std::uint32_t at = 0; at < binsSize_;) {
        std::uint32_t size = binAt(at, findings);
        if (size == 0) size = nextBin(at) - at;   // only when salvaging: its cells may still be whole
        mapBin(at, size, findings);
        at += size;
    }
}

std::uint32_t HiveCells::nextBin(std::uint32_t after) const {
    HiveFindings quiet(HiveMode::Salvage);
    std::uint32_t at = after + binAlignment;
    while (at < binsSize_ && binAt(at, quiet) == 0) at += binAlignment;
    return at;
}

void HiveCells::checkBase(HiveFindings& findings) {
    if (file_.size() < headerSize || std::memcmp(file_.data(), "regf", 4) != 0) {
        throw HiveError(0, "Dies ist keine Strukturdatei der Registrierung.");
    }
    const std::uint8_t* const b = file_.data();
    if (get32(b + header::Checksum) != headerChecksum(b)) findings.fault(header::Checksum, "Die Prüfsumme des Kopfes stimmt nicht.");
    if (get32(b + header::Sequence1) != get32(b + header::Sequence2)) {
        findings.fault(header::Sequence1, "Das letzte Schreiben wurde nicht abgeschlossen; es fehlen die Protokolldateien.");
    }
    minor_ = get32(b + header::Minor);
    if (get32(b + header::Major) != 1 || minor_ < lowestMinor || minor_ > highestMinor) {
        findings.fault(header::Major, "Diese Version des Formats ist nicht bekannt.");
    }
    if (get32(b + header::FileType) != 0) findings.fault(header::FileType, "Dies ist eine Protokolldatei.");
    if (get32(b + header::FileFormat) != 1) findings.fault(header::FileFormat, "Dieses Dateiformat ist nicht bekannt.");
    const std::uint64_t present = std::min<std::uint64_t>(file_.size() - headerSize, largestBins);
    const std::uint32_t told = get32(b + header::BinsSize);
    if (told == 0 || told % binAlignment != 0) {
        findings.fault(header::BinsSize, "Die Länge der Daten ist unmöglich.");
    } else if (told > present) {
        findings.fault(header::BinsSize, "Die Datei ist abgeschnitten.");
    }
    binsSize_ = static_cast<std::uint32_t>(std::min<std::uint64_t>(told == 0 ? present : told, present)) / binAlignment * binAlignment;
}

std::uint32_t HiveCells::binAt(std::uint32_t offset, HiveFindings& findings) const {
    const std::uint64_t place = std::uint64_t{headerSize} + offset;
    const std::uint8_t* const b = file_.data() + place;
    if (std::memcmp(b, "hbin", 4) != 0) {
        findings.fault(place, "Hier müsste ein Abschnitt beginnen.");
        return 0;
    }
    if (get32(b + bin::Offset) != offset) {
        findings.fault(place + bin::Offset, "Der Abschnitt nennt eine andere Stelle als die, an der er steht.");
        return 0;
    }
    const std::uint32_t size = get32(b + bin::Size);
    if (size == 0 || size % binAlignment != 0 || size > binsSize_ - offset) {
        findings.fault(place + bin::Size, "Die Länge des Abschnitts ist unmöglich.");
        return 0;
    }
    return size;
}

void HiveCells::mapBin(std::uint32_t offset, std::uint32_t size, HiveFindings& findings) {
    const std::uint32_t end = offset + size;
    for (std::uint32_t at = offset + binHeaderSize; at < end;) {
        const std::uint32_t raw = get32(file_.data() + headerSize + at);
        const bool used = (raw & 0x80000000u) != 0;
        const std::uint32_t length = used ? 0u - raw : raw;
        if (length < cellAlignment || length % cellAlignment != 0 || length > end - at) {
            findings.fault(std::uint64_t{headerSize} + at, "Die Länge der Zelle ist unmöglich.");
            return;
        }
        if (used) begins_.set(at);
        at += length;
    }
}

ByteSpan HiveCells::cell(std::uint32_t offset) const {
    if (offset >= binsSize_ || offset % cellAlignment != 0 || !begins_.has(offset)) return {};
    const std::uint8_t* const at = file_.data() + headerSize + offset;
    return {at + 4, 0u - get32(at) - 4};
}

void HiveCells::listAllocated() {
    for (std::uint32_t at = 0; at < binsSize_; at += cellAlignment) {
        if (begins_.has(at)) allocated_.push_back(at);
    }
}

}  // namespace brenvik
