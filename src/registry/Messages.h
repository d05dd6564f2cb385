#pragma once
// Texts for the user of the registry's stores and machines (German, UTF-8). {} are places of values.
namespace brenvik::messages {

// A Windows in a folder
inline constexpr char NoProfile[] = "In diesem Windows ist kein Benutzerprofil, dessen Registry gelesen werden kann; HKEY_CURRENT_USER ist nicht erreichbar.";
inline constexpr char ProfileTaken[] = "HKEY_CURRENT_USER ist hier das Profil von {}; weitere Benutzer: {}. Mit --user wird eines gewählt.";
inline constexpr char ProfileWriting[] = "Dieses Windows hat mehrere Benutzer, und keiner wurde gewählt. Soll in das Profil von {} ({}) geschrieben werden ?";

// A Windows 95, 98 or ME in a folder
inline constexpr char NichtErprobt[] = "An einem wirklichen Windows 95/98/ME noch nicht erprobt.";
inline constexpr char BleibtErhalten[] = " Die Datei {} bleibt als {}.bvk erhalten.";
inline constexpr char KeineBenutzerdatei[] = "Zum Benutzer {} wurde keine Datei USER.DAT gefunden.";
inline constexpr char UnklareBenutzerdatei[] = "Die Datei {} hat die Schlüssel eines Benutzers weder oben noch unter einem einzigen Schlüssel; sie wird nicht geöffnet.";
inline constexpr char DateiFehlt[] = "Die Registrydatei {} fehlt.";
inline constexpr char FremdeCodepage[] = "Dieses Windows hat die Codepage {}: Texte werden als Windows-1252 gezeigt und nicht geschrieben.";

}  // namespace brenvik::meldung
