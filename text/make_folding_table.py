#!/usr/bin/env python3
"""Writes text/folding_table.inc from the Unicode data files CaseFolding.txt and UnicodeData.txt.

    make_folding_table.py [/usr/share/unicode]

Two mappings of the 16-bit units: simple case folding (statuses C and S), and simple lower case. Each is a table of
256 block numbers, one for each high byte, and the blocks, which are kept as differences: mapped = unit +
block[low byte], modulo 65536. Block 0 maps nothing.
"""
import os
import re
import sys

folder = sys.argv[1] if len(sys.argv) > 1 else '/usr/share/unicode'
target = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'folding_table.inc')


def read_foldings():
    differences, version = [0] * 65536, ''
    with open(os.path.join(folder, 'CaseFolding.txt'), encoding='utf-8') as lines:
        for line in lines:
            if not version and line.startswith('# CaseFolding-'):
                version = re.search(r'CaseFolding-([\d.]+)\.txt', line).group(1)
            fields = [f.strip() for f in line.split('#')[0].split(';')]
            if len(fields) < 3 or fields[1] not in 'CS':
                continue
            note(differences, fields[0], fields[2])
    return differences, version


def read_lower_cases():
    differences = [0] * 65536
    with open(os.path.join(folder, 'UnicodeData.txt'), encoding='utf-8') as lines:
        for line in lines:
            fields = line.split(';')
            if fields[13]:
                note(differences, fields[0], fields[13])
    return differences


def note(differences, unit, mapped):
    unit, mapped = int(unit, 16), int(mapped, 16)
    if unit < 65536 and mapped < 65536:
        differences[unit] = (mapped - unit) % 65536


def write(out, name, differences):
    blocks, index = [(0,) * 256], []
    for high in range(256):
        block = tuple(differences[high * 256:high * 256 + 256])
        if block not in blocks:
            blocks.append(block)
        index.append(blocks.index(block))
    out.write('const unsigned char k%sIndex[256] = {' % name)
    for at, number in enumerate(index):
        out.write('%s%d,' % ('\n    ' if at % 16 == 0 else ' ', number))
    out.write('\n};\nconst char16_t k%sBlocks[%d][256] = {\n' % (name, len(blocks)))
    for block in blocks:
        out.write('    {')
        for at, difference in enumerate(block):
            out.write('%s%d,' % ('\n        ' if at % 16 == 0 else ' ', difference))
        out.write('\n    },\n')
    out.write('};\n')


foldings, version = read_foldings()
with open(target, 'w', encoding='ascii', newline='\n') as out:
    out.write('// Made by make_folding_table.py from the data of Unicode %s.\n' % version)
    write(out, 'Fold', foldings)
    write(out, 'Lower', read_lower_cases())
