#!/usr/bin/python3
"""Compares what the shared library exports with what its installed headers declare.

usage: exported_symbols.py LIBRARY HEADER_DIR INCLUDE_DIR,...

Every public or protected operation and static member of a class that bears the export macro, and
every exported function, must have a dynamic symbol; besides these the library may export virtual
tables, type information and what Q_OBJECT adds, nothing else. The soname carries the version.
"""
import glob
import pathlib
import re
import subprocess
import sys

from clang.cindex import AccessSpecifier, CursorKind, Index

# Q_OBJECT defines these two inline.
INLINE = ('tr', 'trUtf8')
OPERATIONS = (CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR)


def is_exported(cursor):
    return any(child.kind == CursorKind.VISIBILITY_ATTR for child in cursor.get_children())


def is_declared_only_for_the_compiler(cursor):
    tokens = [token.spelling for token in cursor.get_tokens()]
    return tokens[-2:] == ['=', 'delete'] or cursor.is_pure_virtual_method()


def collect(cursor, folder, names):
    """Mangled names of what is exported below @p cursor."""
    for child in cursor.get_children():
        file = child.location.file
        if not file or pathlib.Path(file.name).parent != folder:
            continue
        if child.kind == CursorKind.NAMESPACE:
            collect(child, folder, names)
        elif child.kind in (CursorKind.FUNCTION_DECL, CursorKind.VAR_DECL) and is_exported(child):
            names.add(child.mangled_name)
        elif child.kind in (CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL) and is_exported(child):
            for member in child.get_children():
                if member.access_specifier == AccessSpecifier.PRIVATE or member.spelling in INLINE:
                    continue
                if member.kind in OPERATIONS and not is_declared_only_for_the_compiler(member):
                    names.add(member.mangled_name)
                elif member.kind == CursorKind.VAR_DECL:
                    names.add(member.mangled_name)


def one_form(symbol):
    """Constructors and destructors have several symbols, which differ in a digit."""
    return re.sub(r'(C|D)[0123](?=E)', r'\1x', symbol)


def main():
    library, headers, includes = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3].split(',')
    folder = headers / 'LanqorEngine'
    names = sorted(path.name for path in folder.glob('*.h') if path.exists())
    text = ''.join(f'#include <LanqorEngine/{name}>\n' for name in names)
    # The library of Clang does not find the compiler's own headers by itself.
    builtin = sorted(glob.glob('/usr/lib/llvm-*/lib/clang/*/include'))
    arguments = ['-std=c++17', '-fPIC', f'-isystem{builtin[-1]}']
    arguments += [f'-I{directory}' for directory in [str(headers), *includes]]
    unit = Index.create().parse('all.cpp', args=arguments, unsaved_files=[('all.cpp', text)])
    errors = [str(message) for message in unit.diagnostics if message.severity >= 3]
    declared = set()
    collect(unit.cursor, folder, declared)
    declared = {one_form(symbol) for symbol in declared}

    listing = subprocess.run(['nm', '--dynamic', '--defined-only', '--format=posix', library],
                             capture_output=True, text=True, check=True).stdout
    exported = {one_form(line.split()[0]) for line in listing.splitlines()}
    added = re.compile(r'_ZT[VIS]|_ZNK?\d+\w+?(qt_static_metacall|staticMetaObject|metaObject)')
    missing = sorted(declared - exported)
    foreign = sorted(symbol for symbol in exported - declared if not added.match(symbol))
    for title, symbols in (('declared, but not exported', missing),
                           ('exported, but not declared', foreign)):
        if symbols:
            readable = subprocess.run(['c++filt', *(s.replace('Cx', 'C1').replace('Dx', 'D1')
                                                    for s in symbols)],
                                      capture_output=True, text=True, check=True).stdout
            errors.append(f'{title}:\n{readable}')
    dynamic = subprocess.run(['readelf', '-d', library], capture_output=True, text=True).stdout
    if '[libLanqorEngine.so.1]' not in dynamic:
        errors.append('the soname is not libLanqorEngine.so.1')
    print('\n'.join(errors))
    print(f'{len(declared)} operations declared, {len(exported)} symbols exported')
    return 1 if errors or len(declared) < 300 else 0


sys.exit(main())
