#include "frame/program/Options.h"

#include "frame/Messages.h"
#include "frame/files/DefaultFolders.h"
#include "frame/files/FileSystem.h"
#include "frame/program/StartPassword.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr int TextHelpWanted = 73, TextHelpMissing = 74, TextPasswordsDiffer = 139;

}  // namespace

bool OptionenAnfrage::HelpFileCheck(const std::string& file, const std::string& dir) {
    ProcTrace trace(ctx.trace, "HelpFileCheck");
    trace.p(file).p(dir);
    bool found = !dir.empty() && ExistFileDirDrive(ctx, dir + file);
    if (!found) {
        const std::string folder = BrowseForFolder(ctx, dir, strBVKTexte(TextHelpWanted));
        found = !folder.empty() && ExistFileDirDrive(ctx, folder + file);
        if (found)
            werte.strOstranaPfad = folder;
        else if (!folder.empty())
            ctx.port.tell(strBVKTexte(TextHelpMissing));
    }
    trace.r(found);
    return found;
}

bool OptionenAnfrage::waehleHilfedatei(const std::string& file) {
    if (werte.Ostrana_Name == file) return true;
    if (!HelpFileCheck(file, werte.strOstranaPfad)) return false;
    werte.Ostrana_Name = file;
    return true;
}

std::string OptionenAnfrage::PfadChange(const std::string& current) {
    ctx.blnHistoryAktiv = ctx.blnFavoritenAktiv = true;
    const std::string folder = BrowseForFolder(ctx, current);
    return folder.empty() ? current : folder;
}

bool OptionenAnfrage::cmdOptOK() {
    const DateTime now = ctx.port.now();
    ctx.klick();
    Settings& s = ctx.einstellungen;
    Settings taken = werte;
    taken.blnPasswortAktiv = s.blnPasswortAktiv;
    taken.strPasswortWert = s.strPasswortWert;
    taken.strPasswortSalz = s.strPasswortSalz;
    taken.blnPasswortUnklar = s.blnPasswortUnklar;
    for (const Ordnereinstellung& entry : Ordnereinstellungen)
        if (Trim(taken.*entry.field).empty()) taken.*entry.field = standardOrdner(ctx, entry);
    std::string& backup = taken.strBackupPfad;
    if (backup.size() > 1 && (backup.ends_with('\\') || backup.ends_with('/'))) backup.pop_back();
    s = taken;
    if (!passwortGeaendert || !ctx.blnAdmin) return true;
    if (chkPasswort && txtPW1 != txtPW2) {
        ctx.port.tell(strBVKTexte(TextPasswordsDiffer), box::Critical);
        return false;
    }
    if (chkPasswort && !istMoeglichesKennwort(txtPW1)) {
        ctx.port.tell(meldung::KennwortZeichen, box::Critical);
        return false;
    }
    setzeStartPasswort(s, chkPasswort, txtPW1, now);
    return true;
}

}  // namespace brenvik
