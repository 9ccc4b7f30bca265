#!/usr/bin/python3
"""Draws which room of the library includes which, and fails on an include of a room above.

usage: room_includes.py ENGINE_DIR ROOM=INCLUDE_DIR,... ...

The rooms below a room are those that its CMakeLists.txt names and those below them. Every
include of a header of ours is looked up, and so is every header of a room that is not below in
the include path with which the room is compiled: it must not be found there.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<LanqorEngine/([^>]+)>)', re.MULTILINE)


def read_rooms(engine):
    """Folder and directly lower rooms by name, in the order of building."""
    rooms = {}
    for lists in engine.rglob('CMakeLists.txt'):
        for name, arguments in re.findall(r'lanqor_room\((\w+)([^)]*)\)', lists.read_text()):
            lower = re.search(r'ROOMS((?:\s+[a-z]+)+)', arguments)
            rooms[name] = (lists.parent, lower.group(1).split() if lower else [])
    return rooms


def below(rooms, name):
    lower = set(rooms[name][1])
    for room in rooms[name][1]:
        lower |= below(rooms, room)
    return lower


def main():
    engine = pathlib.Path(sys.argv[1])
    rooms = read_rooms(engine)
    order = sorted(rooms, key=lambda name: len(below(rooms, name)))
    allowed = {name: below(rooms, name) | {name} for name in rooms}
    room_of_folder = {folder: name for name, (folder, _) in rooms.items()}
    files = {path: room_of_folder[path.parent] for path in engine.rglob('*')
             if path.suffix in ('.h', '.cpp') and path.parent in room_of_folder}
    room_of_header = {path.name: room for path, room in files.items() if path.suffix == '.h'}

    faults = []
    counts = {name: dict.fromkeys(rooms, 0) for name in rooms}
    for path, room in files.items():
        for private, public in INCLUDE.findall(path.read_text()):
            header = public or pathlib.PurePath(private).name
            target = room_of_header.get(header)
            if target is None and header != 'LanqorEngineExport.h':
                faults.append(f'{path}: "{private or public}" is no header of ours')
            elif target and target not in allowed[room]:
                faults.append(f'{path}: {room} includes "{private or public}" of {target}')
            elif target:
                counts[room][target] += 1

    for argument in sys.argv[2:]:
        room, directories = argument.split('=', 1)
        for path, target in files.items():
            if target in allowed[room] or path.suffix != '.h':
                continue
            for directory in map(pathlib.Path, directories.split(',')):
                for name in (f'{target}/{path.name}', f'LanqorEngine/{path.name}'):
                    if (directory / name).exists():
                        faults.append(f'{room} is compiled with {directory}, which has {name}')

    print(f'{"includes of":14}' + ''.join(f'{name:>14}' for name in order))
    for name in order:
        print(f'{name:14}' + ''.join(f'{counts[name][other] or ".":>14}' for other in order))
    print('\n'.join(faults))
    return 1 if faults or len(files) < 50 or len(sys.argv) != len(rooms) + 2 else 0


sys.exit(main())
