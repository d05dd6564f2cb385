#include "frame/program/StartCheck.h"

#include "frame/files/FileSystem.h"
#include "frame/program/CommandLineText.h"
#include "frame/program/Detection.h"
#include "frame/program/Product.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr const char* TitleEnd = "Programmabbruch";
constexpr std::int16_t SmallestBits = 5;
constexpr std::int32_t SmallestBrowser = 5;

bool refuse(FrameContext& ctx, const std::string& text, const char* traced) {
    ctx.port.tell(text, box::Critical, TitleEnd);
    ctx.trace.write(std::string("--- ") + traced);
    ctx.trace.write("--- Programm beendet");
    return false;
}

bool enoughColours(FrameContext& ctx) {
    ctx.trace.write("--- Überprüfung der Auflösung");
    const auto bits = ctx.platform.colourBits();
    if (!bits) {
        ctx.trace.write("--- Auflösung: Das System macht keine Angabe, die Prüfung entfällt");
        return true;
    }
    const std::string colours = coloursText(*bits);
    ctx.trace.write("--- Auflösung: " + colours + "\r\n");
    if (*bits >= SmallestBits) return true;
    return refuse(ctx, "Dieses Programm braucht mindestens 256 Farben.\r\n\r\nSie haben zur Zeit nur: " + colours +
                           "\r\nBitte ändern Sie Ihre Grafikkarteneinstellung und starten Sie das Programm neu",
                  "Anzahl der Farben reicht nicht !!!");
}

bool browserIsThere(FrameContext& ctx) {
    ctx.trace.write("--- IE Version überprüfen");
    if (!ctx.platform.browserComponent()) {
        ctx.trace.write("--- IE Version: Das System kennt keine, die Prüfung entfällt");
        return true;
    }
    if (!GetIEVersion(ctx)) return refuse(ctx, "Es ist kein Internet Explorer installiert, der IE wird aber benötigt !!!", "kein IE installiert");
    if (ctx.intIEMajor >= SmallestBrowser) return true;
    return refuse(ctx, "Es ist die Version: " + numberText(ctx.intIEMajor) + "." + format00(ctx.intIEMinor) + "." + format0000(ctx.intIEBuild) +
                           " installiert. Benötigt wird aber der IE ab Version 5.x",
                  "IE-Version zu klein...");
}

void evaluate(FrameContext& ctx, const std::string& commandLine) {
    CommandLineText line(ctx, commandLine);
    if (!line.empty()) return line.ParameterOK();
    ctx.trace.write("--- Parameter: keine");
    ctx.trace.write("--- Debugmodus: Ausgeschaltet");
    ctx.trace.setDebug(false);
}

}  // namespace

std::string coloursText(std::int16_t bits) {
    switch (bits) {
        case 1: return "2 Farben (Monochrom)";
        case 4: return "16 Farben (Indexfarben)";
        case 8: return "256 Farben";
        case 16: return "65536 Farben (High Color)";
        case 32: return "4294967296 Farben (True Color)";
        default: return {};
    }
}

bool startCheck(FrameContext& ctx, const std::string& commandLine, const std::function<bool()>& anotherInstance) {
    ctx.trace.setDebug(true);
    ctx.trace.write(product::Titel);
    ctx.trace.write("Version: " + ctx.strProgVersion);
    ctx.trace.write("Programmverzeichnis: " + utf8FromPath(ctx.programPath));
    if (anotherInstance()) return false;
    if (!enoughColours(ctx) || !browserIsThere(ctx)) return false;
    evaluate(ctx, commandLine);
    ctx.trace.write("--- Alles ok, starte Hauptprogramm");
    return true;
}

}  // namespace brenvik
