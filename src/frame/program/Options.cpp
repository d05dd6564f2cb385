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

bool OptionenRequest::HelpFileCheck(const std::string& file, const std::string& dir) {
    ProcTrace trace(ctx.trace, "HelpFileCheck");
    trace.p(file).p(dir);
    bool found = !dir.empty() && ExistFileDirDrive(ctx, dir + file);
    if (!found) {
        const std::string folder = BrowseForFolder(ctx, dir, strBVKTexte(TextHelpWanted));
        found = !folder.empty() && ExistFileDirDrive(ctx, folder + file);
        if (found)
            values.strOstranaPfad = folder;
        else if (!folder.empty())
            ctx.port.tell(strBVKTexte(TextHelpMissing));
    }
    trace.r(found);
    return found;
}

bool OptionenRequest::chooseHelpFile(const std::string& file) {
    if (values.Ostrana_Name == file) return true;
    if (!HelpFileCheck(file, values.strOstranaPfad)) return false;
    values.Ostrana_Name = file;
    return true;
}

std::string OptionenRequest::PfadChange(const std::string& current) {
    ctx.blnHistoryAktiv = ctx.blnFavoritenAktiv = true;
    const std::string folder = BrowseForFolder(ctx, current);
    return folder.empty() ? current : folder;
}

bool OptionenRequest::cmdOptOK() {
    const DateTime now = ctx.port.now();
    ctx.click();
    Settings& s = ctx.einstellungen;
    Settings taken = values;
    taken.blnPasswortAktiv = s.blnPasswortAktiv;
    taken.strPasswortWert = s.strPasswortWert;
    taken.strPasswortSalz = s.strPasswortSalz;
    taken.blnPasswordUnclear = s.blnPasswordUnclear;
    for (const FolderSetting& entry : FolderSettings)
        if (Trim(taken.*entry.field).empty()) taken.*entry.field = defaultFolder(ctx, entry);
    std::string& backup = taken.strBackupPath;
    if (backup.size() > 1 && (backup.ends_with('\\') || backup.ends_with('/'))) backup.pop_back();
    s = taken;
    if (!passwordChanged || !ctx.blnAdmin) return true;
    if (chkPasswort && txtPW1 != txtPW2) {
        ctx.port.tell(strBVKTexte(TextPasswordsDiffer), box::Critical);
        return false;
    }
    if (chkPasswort && !isPossiblePassword(txtPW1)) {
        ctx.port.tell(messages::PasswordCharacters, box::Critical);
        return false;
    }
    setStartPassword(s, chkPasswort, txtPW1, now);
    return true;
}

}  // namespace brenvik
