"""What a power cut leaves of a folder: the calls that a log holds are played onto its files as they were, and each of
them counts only once it was flushed."""
import os


class File:
    def __init__(self, content=b""):
        self.disk, self.now, self.waiting = content, bytearray(content), []

    def write(self, at, content):
        self.now.extend(b"\0" * (at - len(self.now)))
        self.now[at:at + len(content)] = content
        self.waiting.append((at, content))

    def truncate(self, length):
        del self.now[length:]
        self.now.extend(b"\0" * (length - len(self.now)))
        self.waiting.append((length, None))

    def flush(self):
        self.disk, self.waiting = bytes(self.now), []

    def content(self, kept):
        """As the disk has it if `kept` of the bytes that wait for it came there, in the order of the writes; -1: the
        length came there, and zeros."""
        if kept < 0:
            return self.disk[:len(self.now)] + b"\0" * (len(self.now) - len(self.disk))
        left = File(self.disk)
        for at, content in self.waiting:
            if content is None:
                left.truncate(at)
            else:
                left.write(at, content[:kept])
                kept -= len(content[:kept])
        return bytes(left.now)


class Folder:
    """Only its identity counts: its entries are changed by what waits for a flush."""


class LostWrites:
    def __init__(self, top, files):
        self.top, self.root = str(top), Folder()
        self.first = {self.root: {}}
        for path in sorted(files):
            parent, name = self.entry(os.path.join(self.top, path), self.first)
            node = Folder() if files[path] is None else File(files[path])
            self.first[parent][name] = node
            if files[path] is None:
                self.first[node] = {}
        self.entries = {folder: dict(names) for folder, names in self.first.items()}
        self.changes, self.flushed = [], []  # each: [(folder, name, node or None)...]; whether it is on the disk

    def entry(self, path, entries=None):
        """The folder and the name of a path; no folder if the path leads nowhere."""
        entries = self.entries if entries is None else entries
        folder, parts = self.root, os.path.relpath(path, self.top).split(os.sep)
        for part in parts[:-1]:
            folder = entries.get(folder, {}).get(part)
        return folder if folder in entries else None, parts[-1]

    def find(self, path):
        folder, name = self.entry(path)
        return self.root if name == "." else self.entries.get(folder, {}).get(name)

    def change(self, *changes):
        self.apply(self.entries, changes)
        self.changes.append(changes)
        self.flushed.append(False)

    @staticmethod
    def apply(entries, changes):
        for folder, name, node in changes:
            names = entries.setdefault(folder, {})
            if node is None:
                names.pop(name, None)
            else:
                names[name] = node
                if isinstance(node, Folder):
                    entries.setdefault(node, {})

    # The calls, by their names in the log. One that the system refused changes nothing here either.

    def play(self, line):
        call, path, *rest = line.split("\t")
        getattr(self, "do_" + call)(path, *rest)

    def do_create(self, path, emptied=""):
        node = self.find(path)
        folder, name = self.entry(path)
        if node is None and folder:
            self.change((folder, name, File()))
        elif emptied and isinstance(node, File):
            node.truncate(0)

    def do_write(self, path, at, content):
        node = self.find(path)
        if isinstance(node, File):
            node.write(int(at), bytes.fromhex(content))

    def do_truncate(self, path, length):
        node = self.find(path)
        if isinstance(node, File):
            node.truncate(int(length))

    def do_fsync(self, path, *_):
        node = self.find(path)
        if isinstance(node, File):
            node.flush()
        for number, changes in enumerate(self.changes):
            # A rename is on the disk with its new name.
            if changes[-1][0] is node:
                self.flushed[number] = True

    def do_rename(self, path, target):
        node, (folder, name), (into, new) = self.find(path), self.entry(path), self.entry(target)
        if node is not None and into:
            self.change((folder, name, None), (into, new, node))

    def do_link(self, path, target):
        node, (into, new) = self.find(path), self.entry(target)
        if node is not None and into and self.find(target) is None:
            self.change((into, new, node))

    def do_unlink(self, path, *_):
        node, (folder, name) = self.find(path), self.entry(path)
        if node is not None and not (isinstance(node, Folder) and self.entries[node]):
            self.change((folder, name, None))

    def do_mkdir(self, path, *_):
        folder, name = self.entry(path)
        if folder and self.find(path) is None:
            self.change((folder, name, Folder()))

    # What is left.

    def seen(self):
        """The files as every program sees them."""
        return self.walk(self.entries, lambda file: bytes(file.now))

    def left(self, arrived, kept):
        """The files after a power cut: of the changes of folders that weren't flushed, those with the numbers
        `arrived` came to the disk, and `kept` bytes of each file (File.content)."""
        entries = {folder: dict(names) for folder, names in self.first.items()}
        for number, changes in enumerate(self.changes):
            if self.flushed[number] or number in arrived:
                self.apply(entries, changes)
        return self.walk(entries, lambda file: file.content(kept))

    def walk(self, entries, content):
        found, open_folders = {}, [("", self.root)]
        while open_folders:
            path, folder = open_folders.pop()
            for name, node in entries.get(folder, {}).items():
                below = os.path.join(path, name)
                found[below] = content(node) if isinstance(node, File) else None
                if isinstance(node, Folder):
                    open_folders.append((below, node))
        return found

    def waiting(self):
        return [number for number, flushed in enumerate(self.flushed) if not flushed]

    def arrivals(self):
        """Which of the waiting changes came to the disk: each choice of a few; of many none, all, each row of first
        ones, each alone and all but each."""
        waiting = self.waiting()
        if len(waiting) <= 4:
            return [{one for bit, one in enumerate(waiting) if choice >> bit & 1} for choice in range(1 << len(waiting))]
        rows = [set(waiting[:count]) for count in range(len(waiting) + 1)]
        return rows + [{one} for one in waiting] + [set(waiting) - {one} for one in waiting]
