#pragma once
// The program's state, in one object made by main and handed on by reference. It is typed in layers, so that a
// room sees only what its own level may know: FrameContext < RegistryContext < TipdbContext < Context.
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "frame/Errors.h"
#include "frame/Trace.h"
#include "frame/UserPort.h"
#include "frame/platform/Platform.h"
#include "frame/program/SystemVersion.h"

namespace brenvik {

// Settings that the core asks for; names as in the settings store. Form and place are the store's business.
struct Settings {
    bool SoundOn = true;
    bool ShowInfo = true;
    bool BSSystemAktiv = true;   // a Tip is checked against the operating system
    bool LöschenAktiv = false;   // values and keys may be deleted (blnLoeschenErlaubt)
    bool RegFileClasic = true;
    bool RegFileChecked = false;  // REG files in the checked form, which every importer reads alike
    bool ShowNavText = true;
    bool BSErsatz = false;       // treat an unrecognised system as Windows XP
    int TreeAktiv = 1;
    std::string ColourScheme = "System";   // "System", "Hell" or "Dunkel"
    std::string Ostrana_Name = "ostrana.hlp";
    std::string strOstranaPfad, strFavoritenPfad, strHistoryPfad, strBackupPath;
    // The start password of all users, as frame/PasswordAtTheStart.h makes and checks it.
    bool blnPasswortAktiv = false;
    std::string strPasswortWert, strPasswortSalz;
    bool blnPasswordUnclear = false;   // whether it is on cannot be told from what is stored; that stays until a password is set
    bool operator==(const Settings&) const = default;
};

struct FrameContext {
    FrameContext(UserPort& userPort, Platform& hostPlatform);  // a trace line that cannot be written is reported in a box
    FrameContext(const FrameContext&) = delete;
    FrameContext& operator=(const FrameContext&) = delete;

    UserPort& port;
    Platform& platform;
    TraceLog trace;
    Settings einstellungen;

    std::filesystem::path programPath;  // program directory: database, help, icons, sound
    std::filesystem::path homePath;      // the user's home of the program: store, drive_c, log
    std::filesystem::path strKlickWav;

    std::string strProgVersion;
    std::string strParamPC, strParamUser, strParamPasswort;
    std::string strParamProfil;          // the profile of the machine to work on, by SID or name; empty: the machine's choice
    std::string strLokalerRechner;
    std::string strRechnername;          // empty or equal to strLokalerRechner: the local machine
    bool blnLokal = true;
    std::string strBS = "Unbekanntes Betriebssystem";
    std::string strBSName;               // what a system is called that strBS does not know; empty otherwise
    std::int16_t intBS = 0;              // 0 unknown, 1 95, 2 98, 3 NT, 4 2000, 5 ME, 6 XP
    OSVERSIONINFO osVersion;             // what the decision was made from
    std::int32_t intIEMajor = 0, intIEMinor = 0, intIEBuild = 0;   // the browser component; 0 where there is none
    bool blnAdmin = false;
    bool blnPrivilegien = false;
    std::string strUserName;
    std::string strDefaultUserID;
    std::string strEigeneSID;            // the user's own SID
    std::string strUserSID;              // SID of the profile being edited
    std::string strProfilSID;            // what [SID] in a Tip stands for
    std::string strWindir = "C:\\WINDOWS";
    std::string strWinLaufwerk = "C:\\";
    std::string strSystemLaufwerk = "C:\\";
    std::string strSystemVerzeichnis = "C:\\WINDOWS\\system32\\";
    std::string strStartInfo;
    bool blnHistoryAktiv = false;
    bool blnFavoritenAktiv = false;
    bool blnNeustartNoetig = false;

    // As windows show it.
    std::string systemDisplay() const { return strBSName.empty() ? strBS : strBS + " (" + strBSName + ")"; }
    const std::string& machineDisplay() const { return strRechnername.empty() ? strLokalerRechner : strRechnername; }

    bool istNT() const { return intBS == 3 || intBS == 4 || intBS == 6; }

    // Plays the click sound if sounds are on.
    void click() {
        if (einstellungen.SoundOn) port.playSound(strKlickWav.string());
    }
};

}  // namespace brenvik
