#pragma once
// Texts for the user of the registry's stores and machines (German, UTF-8). {} are places of values.
namespace brenvik::meldung {

// A Windows in a folder
inline constexpr char KeinProfil[] = "In diesem Windows ist kein Benutzerprofil, dessen Registry gelesen werden kann; HKEY_CURRENT_USER ist nicht erreichbar.";
inline constexpr char ProfilGenommen[] = "HKEY_CURRENT_USER ist hier das Profil von {}; weitere Benutzer: {}. Mit --user wird eines gewählt.";
inline constexpr char ProfilSchreiben[] = "Dieses Windows hat mehrere Benutzer, und keiner wurde gewählt. Soll in das Profil von {} ({}) geschrieben werden ?";

}  // namespace brenvik::meldung
