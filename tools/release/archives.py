"""Archives whose bytes only depend on the files in them: sorted, of one owner, and all of one moment."""
import gzip
import io
import tarfile
import zipfile

# Of every file in an archive: with the time of the build, no two packages would be the same.
MOMENT = 1577836800  # 2020-01-01, 0:00 UTC
MOMENT_TEXT = "2020-01-01T00:00:00Z"
MOMENT_OF_ZIP = (2020, 1, 1, 0, 0, 0)


def mode_of(file):
    return 0o755 if file.stat().st_mode & 0o100 else 0o644


def files_of(folder):
    """The files below a folder by their names from there, sorted."""
    files = {str(file.relative_to(folder)): file for file in folder.rglob("*") if file.is_file()}
    return dict(sorted(files.items()))


def write_zip(path, top, files):
    """`files`: where they are by their names, which come below the folder `top`."""
    with zipfile.ZipFile(path, "w") as archive:
        for name, file in files.items():
            entry = zipfile.ZipInfo(f"{top}/{name}", MOMENT_OF_ZIP)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # Unix: the modes hold
            entry.external_attr = (0o100000 | mode_of(file)) << 16
            archive.writestr(entry, file.read_bytes())


def write_tar(path, top, files):
    """Likewise, as .tar.gz."""
    with (open(path, "wb") as output, gzip.GzipFile("", "wb", 9, output, mtime=0) as packed,
          tarfile.open(fileobj=packed, mode="w", format=tarfile.USTAR_FORMAT) as archive):
        for name, file in files.items():
            entry = tarfile.TarInfo(f"{top}/{name}")
            data = file.read_bytes()
            entry.size, entry.mode, entry.mtime = len(data), mode_of(file), MOMENT
            entry.uname = entry.gname = "root"
            archive.addfile(entry, io.BytesIO(data))
