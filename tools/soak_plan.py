"""What the library is asked in a soak, in which order and with which faults, and what has to come of it: all
of it from a seed."""
import dataclasses
import random
import struct
import zlib

from soak_faults import Fault

COUNTS = {"search": 5000, "range": 5000, "download": 1000, "signin": 400, "create": 100,
          "reload": 200}
USER, PASSWORD = "soak", "Secret-1"
FAULTS = {"none": 70, "slow": 8, "refused": 5, "unavailable": 5, "reset at once": 4, "reset within": 4,
          "cut": 4}

# Of LMOnline.h and LMAccount.h.
CANCELLED = 0x20000002
REPLY_ENDED = 0x20000003
HTTP_STATUS = 0x21000000
SERVICE_STATUS = 0x22000000
# How WinINet names a connection that was reset, and the sockets below it. A reset that comes just before a
# read passes for the end of the reply.
RESET = {12030, 12031, 12152, 10054, REPLY_ENDED}
NOT_SENT = {"refused": {12029}, "unavailable": {HTTP_STATUS + 503}, "reset at once": RESET}

# What the account's dialog says.
PROBLEM = "A problem occured communicating with the server"
WRONG_PASSWORD = 'The Password is not correct. If you have lost your password, click the "I Forgot" button.'
NOT_SENT_MESSAGE = "Problem communicating over the internet"
NAME_TAKEN = ("This user name is already in use. If this is your account and you have forgotten the User "
              'ID or Password, click "Cancel" and "I Forgot" to recover them.')
UNKNOWN_USER = ('The User ID is not correct. If you have lost your ID, click the "I Forgot" button. Do not '
                "create more than one account.")


def hash_of(data):
    return f"{zlib.crc32(data):08x}"


def record_hash(one):
    """Of a map as the library hands it out."""
    name, kilobytes, path, description, *_ = one
    texts = "".join(text + "\0" for text in (name, path, description))
    return hash_of(struct.pack("<i", kilobytes) + texts.encode("utf-16-le"))


@dataclasses.dataclass
class Operation:
    """One line for the program, the fault meanwhile, and what is expected: sets of causes, and of what stands
    behind the cause in the answer. `before` is what is in the file that is downloaded to, `after` what may be
    there at the end; None: no file."""
    line: str
    fault: Fault = Fault()
    causes: set = dataclasses.field(default_factory=lambda: {0})
    answers: set = dataclasses.field(default_factory=set)
    before: bytes | None = None
    after: tuple = (None,)

    @property
    def kind(self):
        return self.line.split(" ")[0]

    @property
    def request(self):
        """The line that makes such a request without the DLLs; None: there is none to be made."""
        if self.kind not in ("signin", "create"):
            return self.line
        return None if self.line.endswith(" cancel") else "search"

    def wrong(self, answer, after):
        """What is wrong with an answer and with the file that is there afterwards; None: nothing."""
        cause, _, rest = answer.partition(" ")
        if self.kind == "reload":
            return None if answer == "reloaded" else answer
        if not cause.isdigit() or int(cause) not in self.causes:
            return f"cause {cause}, not {sorted(self.causes)}"
        if rest not in self.answers:
            return f"'{rest}', not one of {sorted(self.answers)}"
        if self.kind == "download" and after not in self.after:
            return "the file is not what it has to be"
        return None


class Planner:
    def __init__(self, shop, seed):
        self.shop = shop
        self.random = random.Random(seed)
        self.created = 0
        self.hashes = {one[0]: record_hash(one) for one in shop.maps}

    def operations(self, percent):
        """That part of all, at least one of each kind, mixed."""
        kinds = [kind for kind, count in COUNTS.items() for _ in range(max(1, round(count * percent / 100)))]
        self.random.shuffle(kinds)
        return [getattr(self, kind)() for kind in kinds]

    def fault(self, longest):
        """`longest` bytes of the body are kept at most; below 0: the body cannot be cut."""
        kind = self.random.choices(list(FAULTS), list(FAULTS.values()))[0]
        if kind not in ("reset within", "cut"):
            return Fault(kind)
        return Fault(kind, self.random.randint(0, longest)) if longest >= 0 else Fault()

    def box(self):
        south, west = self.random.randrange(-8000000, 7000000), self.random.randrange(-16000000, 15000000)
        return south, west, self.random.randrange(south, 8000000), self.random.randrange(west, 16000000)

    def search(self):
        if self.random.random() < 0.03:
            refused = Operation("search 5 0 -5 0", self.fault(-1), {SERVICE_STATUS + 5}, {"0"})
            return self.not_sent(refused, "0")
        boxes = [self.box() for _ in range(self.random.choice([0, 1, 1, 1, 3]))]
        hashes = [self.hashes[one[0]] for one in self.shop.found(boxes)]
        fault = self.fault(len(self.shop.answer(boxes)) - 1)
        line = " ".join(["search", *(str(number) for box in boxes for number in box)])
        if fault.kind in ("reset within", "cut"):
            # Results that came before are there. Of the last value, which is below 256, the first byte does.
            causes = {REPLY_ENDED} if fault.kind == "cut" else RESET
            answers = {" ".join(["0", *hashes[:count]]) for count in range(len(hashes) + 1)}
            if fault.kept > len(self.shop.answer(boxes)) - 4:
                answers.add(" ".join([str(len(self.shop.maps)), *hashes]))
            return Operation(line, fault, causes, answers)
        whole = " ".join([str(len(self.shop.maps)), *hashes])
        return self.not_sent(Operation(line, fault, {0}, {whole}), "0")

    @staticmethod
    def not_sent(operation, *answers):
        """The same, or what a fault makes of it before anything has been received."""
        if operation.fault.kind in NOT_SENT:
            return dataclasses.replace(operation, causes=NOT_SENT[operation.fault.kind], answers=set(answers),
                                       after=(operation.before,))
        return operation

    def any_file(self):
        return self.random.choice(list(self.shop.files.items()))

    def download(self):
        path, contents = self.any_file()
        before = self.random.choice([None, b"an older file"])
        size = len(contents)
        if self.random.random() < 0.05:
            refused = Operation("download /maps/none.map 0", self.fault(-1), {HTTP_STATUS + 404}, {"0 -7 -7"},
                                before, (before,))
            return self.not_received(refused)
        if self.random.random() < 0.1:
            return Operation(f"download {path} 1", Fault(), {CANCELLED}, {f"0 0 {size}"}, before)
        fault = self.fault(size - 1)
        line = f"download {path} 0"
        cut = contents[:fault.kept]
        if fault.kind == "cut":
            return Operation(line, fault, {REPLY_ENDED}, {f"1 {len(cut)} {size}"}, before, (cut,))
        if fault.kind == "reset within":
            # How much of it comes before the reset is the network's business.
            return ResetDownload(line, fault, RESET, set(), before, (cut,))
        whole = Operation(line, fault, {0}, {f"1 {size} {size}"}, before, (contents,))
        return self.not_received(whole)

    def not_received(self, download):
        if download.fault.kind == "reset at once":
            return EmptyDownload(download.line, download.fault, RESET, {"0 -7 -7"}, download.before,
                                 (download.before,))
        return self.not_sent(download, "0 -7 -7")

    def range(self):
        path, contents = self.any_file()
        while len(contents) < 2:
            path, contents = self.any_file()
        size = len(contents)
        first = self.random.randrange(size)
        length = self.random.randint(1, 9000)
        chance = self.random.random()
        if chance < 0.03:
            line = f"range {path} {size} {length} 0"
            none = f"-1 {hash_of(b'.' * length)}"
            return self.not_read(Operation(line, self.fault(-1), {HTTP_STATUS + 416}, {none}), length)
        body = contents[first:first + length]
        if chance < 0.06:
            return AnyBytes(f"range {path} {first} {length} 1", Fault(), {CANCELLED}, {"0"})
        fault = self.fault(len(body) - 1)
        line = f"range {path} {first} {length} 0"
        if fault.kind == "reset within":
            return AnyBytes(line, fault, RESET, {"0"})
        if fault.kind == "cut":
            body = body[:fault.kept]
        is_whole = len(body) == length
        answer = f"{length if is_whole else 0} {hash_of(body + b'.' * (length - len(body)))}"
        return self.not_read(Operation(line, fault, {0 if is_whole else REPLY_ENDED}, {answer}), length)

    def not_read(self, part, length):
        none = hash_of(b"." * length)
        # A connection that ends without a byte is an empty reply for WinINet, or none.
        empty = [f"0 {none}"] if part.fault.kind == "reset at once" else []
        return self.not_sent(part, f"-1 {none}", *empty)

    def signin(self):
        chance = self.random.random()
        if chance < 0.3:
            return Operation(f"signin {USER} {PASSWORD} cancel", Fault(), {CANCELLED}, {"0 "})
        # After half a reply of 8 bytes the dialog has nothing to go by.
        fault = self.fault(4)
        if fault.kind not in ("none", "slow"):
            return Operation(f"signin {USER} {PASSWORD} message", fault, {CANCELLED}, {f"0 {PROBLEM}"})
        if chance < 0.6:
            return Operation(f"signin {USER} {PASSWORD} accepted", fault, {0}, {"1 "})
        if chance < 0.8:
            line, message = f"signin {USER} {PASSWORD}x message", WRONG_PASSWORD
        else:
            line, message = f"signin nobody {PASSWORD} message", UNKNOWN_USER
        return Operation(line, fault, {CANCELLED}, {f"0 {message}"})

    def create(self):
        chance = self.random.random()
        if chance < 0.3:
            return Operation(f"create {USER} {PASSWORD} cancel", Fault(), {CANCELLED}, {"0 "})
        if chance < 0.4:
            return Operation(f"create {USER} {PASSWORD} message", Fault("refused"), {CANCELLED},
                             {f"0 {NOT_SENT_MESSAGE}"})
        if chance < 0.7:
            return Operation(f"create {USER} {PASSWORD} message", self.slow(), {CANCELLED},
                             {f"0 {NAME_TAKEN}"})
        self.created += 1
        return Operation(f"create new-{self.created} {PASSWORD} accepted", self.slow(), {0}, {"1 "})

    def slow(self):
        return Fault(self.random.choice(["none", "slow"]))

    @staticmethod
    def reload():
        return Operation("reload")

    def first(self):
        """What comes first, so that everything has been used once that is used only later otherwise."""
        cancelled = [Operation(f"{kind} {USER} {PASSWORD} cancel", causes={CANCELLED}, answers={"0 "})
                     for kind in ("signin", "create")]
        refused = Operation(f"signin {USER} {PASSWORD}x message", causes={CANCELLED},
                            answers={f"0 {WRONG_PASSWORD}"})
        accepted = Operation(f"signin {USER} {PASSWORD} accepted", answers={"1 "})
        search = Operation("search", answers={" ".join([str(len(self.shop.maps)), *self.hashes.values()])})
        return [self.reload(), search, *3 * [*cancelled, refused, accepted], self.reload(), search]


class AnyBytes(Operation):
    """A range of which nobody knows how many bytes came."""

    def wrong(self, answer, after):
        return super().wrong(answer.rpartition(" ")[0], after)


class EmptyDownload(Operation):
    """A download that was reset at once: not sent, or an empty reply, which is a whole one, since nothing
    says how long it should have been. WinINet decides which of them."""

    def wrong(self, answer, after):
        if answer == "0 1 0 -1" and after == b"":
            return None
        return super().wrong(answer, after)


class ResetDownload(Operation):
    """A download that has failed, and left no file, or whose reset has passed for an end."""

    def wrong(self, answer, after):
        most = self.after[0]
        words = answer.split(" ")
        is_failure = words[1] == "0" and after is None
        is_end = (words[:2] == [str(REPLY_ENDED), "1"] and after is not None and most.startswith(after)
                  and words[2] == str(len(after)))
        if int(words[0]) in self.causes and (is_failure or is_end):
            return None
        return f"'{answer}' after a reset, and {'a' if after is not None else 'no'} file"
