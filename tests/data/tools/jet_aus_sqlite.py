# -*- coding: utf-8 -*-
"""jet_aus_sqlite.py SQLITE JET VERSION: the four tables of a tip database (SQLite) as a Jet 3 or Jet 4 file."""
import sqlite3
import sys

import jetwrite

KINDS = {"Index": "long", "Gruppe": "long", "Nummer": "long", "Ebene": "long", "Nachfolger": "long", "HauptIndex": "long", "Datentyp": "long",
         "HilfeNummer": "long", "Reserve13": "long", "Vorgänger": "int", "Ausgabeart": "int", "Symbol": "int", "Verweis": "int", "AnzahlWerte": "byte",
         "TypAnpassen": "byte", "Neustart": "byte", "Beschreibung": "memo", "INITipp": "bool", "ADMExport": "bool"}


def kind(column):
    return "bool" if column.startswith("Win") else KINDS.get(column, "text")


def main(source, target, version):
    db = sqlite3.connect(source)
    tables = {}
    for name in ("Version", "Gruppennamen", "Treebaum", "RegDaten"):
        cursor = db.execute('select * from "%s" order by rowid' % name)
        tables[name] = {"cols": [(c[0], kind(c[0]), 255) for c in cursor.description], "rows": [list(r) for r in cursor]}
    jetwrite.write(target, version, tables)


main(sys.argv[1], sys.argv[2], int(sys.argv[3]))
