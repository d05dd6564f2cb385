# What libcreg reads of a registry file, one line for each key and value.
import sys
import pycreg

sys.setrecursionlimit(10000)
source = pycreg.file()
source.set_ascii_codepage('windows-1252')
source.open(sys.argv[1])


def tell(path, key):
    print('K', path.hex())
    for i in range(key.number_of_values):
        value = key.get_value(i)
        print('V %s|%s|%d|%s' % (path.hex(), (value.name or '').encode('cp1252').hex(), value.type, (value.data or b'').hex()))
    for i in range(key.number_of_sub_keys):
        child = key.get_sub_key(i)
        name = (child.name or '').encode('cp1252')
        tell(path + b'\\' + name if path else name, child)


tell(b'', source.get_root_key())
