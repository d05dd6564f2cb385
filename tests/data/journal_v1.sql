CREATE TABLE aenderung(
  nummer INTEGER PRIMARY KEY AUTOINCREMENT, zeit TEXT NOT NULL, rechner TEXT NOT NULL, lokal TEXT NOT NULL, benutzer TEXT NOT NULL,
  sid TEXT NOT NULL, art INTEGER NOT NULL, tipp INTEGER NOT NULL, ueberschrift TEXT NOT NULL, zeile TEXT, hebtauf INTEGER NOT NULL,
  aufgehobendurch INTEGER NOT NULL DEFAULT 0, ausgeblendet INTEGER NOT NULL DEFAULT 0, nurzeile INTEGER NOT NULL DEFAULT 0);
CREATE TABLE datei(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, datei TEXT NOT NULL, vorhanden INTEGER NOT NULL, inhalt BLOB NOT NULL, neu BLOB NOT NULL,
  geschrieben INTEGER NOT NULL, PRIMARY KEY(aenderung, nr));
CREATE TABLE neuerschluessel(aenderung INTEGER NOT NULL, pfad TEXT NOT NULL);
CREATE TABLE paar(aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, PRIMARY KEY(aenderung, nr)) WITHOUT ROWID;
CREATE TABLE schluessel(aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, geloescht INTEGER NOT NULL, angelegt INTEGER NOT NULL,
  PRIMARY KEY(aenderung, nr));
CREATE TABLE unterschluessel(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, folge INTEGER NOT NULL, unter TEXT NOT NULL, klasse BLOB NOT NULL, geschrieben INTEGER NOT NULL,
  rechte BLOB NOT NULL, PRIMARY KEY(aenderung, nr, folge));
CREATE TABLE unterwert(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, folge INTEGER NOT NULL, unter TEXT NOT NULL, name TEXT NOT NULL, typ INTEGER NOT NULL,
  bytes BLOB NOT NULL, PRIMARY KEY(aenderung, nr, folge));
CREATE TABLE wert(
  aenderung INTEGER NOT NULL, nr INTEGER NOT NULL, pfad TEXT NOT NULL, tipp INTEGER NOT NULL, alttyp INTEGER, alt BLOB, neutyp INTEGER,
  neu BLOB, geschrieben INTEGER NOT NULL, PRIMARY KEY(aenderung, nr)) WITHOUT ROWID;
CREATE INDEX aenderung_zeile ON aenderung(zeile) WHERE zeile IS NOT NULL;
CREATE INDEX neuerschluessel_aenderung ON neuerschluessel(aenderung);
INSERT INTO aenderung VALUES(1,'2002-11-09 12:00:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',0,1,'Drei','09.11.2002#12:00:00#ALT-PC#1#alt#',0,2,0,0);
INSERT INTO aenderung VALUES(2,'2002-11-09 12:01:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',8,1,'Drei',NULL,1,0,0,0);
INSERT INTO aenderung VALUES(3,'2002-11-09 12:02:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',6,9,'Ini',NULL,0,0,0,0);
INSERT INTO aenderung VALUES(4,'2002-11-09 12:03:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',6,9,'Fremd',NULL,0,0,0,0);
INSERT INTO aenderung VALUES(5,'2002-11-09 12:04:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',5,7,'Liste',NULL,0,6,0,0);
INSERT INTO aenderung VALUES(6,'2002-11-09 12:05:00','ALT-PC','ALT-PC','Prüfer','S-1-5-21-1-2-3-1003',8,7,'Liste',NULL,5,0,0,0);
INSERT INTO paar VALUES(1,0,'HKEY_CURRENT_USER\Software\Probe\A');
INSERT INTO wert VALUES(1,0,'HKEY_CURRENT_USER\Software\Probe\A',1,1,X'61006C0074000000',1,X'6E00650075000000',1);
INSERT INTO wert VALUES(2,0,'HKCU\Software\Probe\A',0,1,X'6E00650075000000',1,X'61006C0074000000',1);
INSERT INTO datei VALUES(3,0,'/anderswo/drive_c/heim/drive_c/windows/win.ini',1,CAST('[windows]' || char(13,10) || 'load=alt' || char(13,10) AS BLOB),CAST('[windows]' || char(13,10) || 'load=neu' || char(13,10) AS BLOB),1);
INSERT INTO datei VALUES(4,0,'@FREMD@',1,CAST('böse' AS BLOB),CAST('[a]' || char(13,10) || 'b=1' || char(13,10) AS BLOB),1);
INSERT INTO schluessel VALUES(5,0,'HKCU\Software\Probe\eins',1,0);
INSERT INTO unterschluessel VALUES(5,0,0,'',X'',0,X'');
INSERT INTO unterwert VALUES(5,0,0,'','W',1,X'78000000');
INSERT INTO schluessel VALUES(6,0,'HKCU\Software\Probe\eins',0,0);
PRAGMA application_id = 0x42564B4A;
PRAGMA user_version = 1;
