"""Which places of an image hold addresses, found out without the linker's relocations."""
import struct

from elftools.elf.elffile import ELFFile


def places_that_move(elf, moved_elf):
    """The offsets, from an image's base, of the words that differ between its link for address 0 and another
    one."""
    with open(elf, "rb") as one, open(moved_elf, "rb") as other:
        pairs = list(zip(*(ELFFile(file).iter_segments("PT_LOAD") for file in (one, other)), strict=True))
        origins = {second["p_vaddr"] - first["p_vaddr"] for first, second in pairs}
        if len(origins) != 1 or 0 in origins:
            raise ValueError(f"{moved_elf} is not {elf} at another address")
        places = set()
        for first, second in pairs:
            before, after = words_of(first), words_of(second)
            if len(before) != len(after):
                raise ValueError(f"{elf} and {moved_elf} differ in length")
            places |= {first["p_vaddr"] + 4 * i for i, word in enumerate(before) if word != after[i]}
    return places


def words_of(segment):
    data = segment.data()
    return struct.unpack(f"<{(len(data) + 3) // 4}I", data + bytes(-len(data) % 4))


def relocated(image):
    """The places that the image's table (of a pefile.PE) tells the loader to relocate, as often as it
    does."""
    return [entry.rva for block in image.DIRECTORY_ENTRY_BASERELOC for entry in block.entries
            if entry.type != 0]
