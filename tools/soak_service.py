"""The service under clients of which a third misbehave; tools/soak says how it is called."""
import asyncio
import os
import statistics
import time

import soak_growth
from soak_clients import BadClient, GoodClient
from soak_shop import Broken, Shop

CLIENTS = 64
SAMPLES = 60
MOST_WRONG_SHOWN = 10
LOG = "build/log/soak-service"
# A block that is left behind by each request is 32 bytes at least, which makes 32 KB in a thousand; each of
# the 128 threads has a stack to fill first, and some have heaps of their own. Of descriptors and threads one
# for each request of any kind is far above its line: the rarest kind of misbehaviour is one request in a
# hundred. What comes and goes are the clients' connections.
LIMITS = [soak_growth.Limit("resident KB", 16, 1024, warm=20000),
          soak_growth.Limit("descriptors", 1, CLIENTS),
          soak_growth.Limit("threads", 0.1, 1)]


def say(line):
    print(f"soak: {line}", flush=True)


def looked(shop):
    """What the service holds, without what a request holds for a moment."""
    looks = []
    for _ in range(5):
        looks.append(shop.figures())
        time.sleep(0.002)
    return {name: min(look[name] for look in looks) for name in looks[0]}


class Run:
    def __init__(self, shop, seconds, seed):
        self.shop = shop
        self.seconds = seconds
        bad = CLIENTS // 3
        self.good = [GoodClient(shop, number, seed) for number in range(CLIENTS - bad)]
        self.bad = [BadClient(shop, number, seed) for number in range(bad)]
        self.samples = soak_growth.Samples()

    def answers(self):
        return [seconds for client in self.good for seconds in client.seconds]

    def wrong(self):
        return [what for client in self.good for what in client.wrong]

    def misdeeds(self):
        done = {}
        for client in self.bad:
            for kind, count in client.done.items():
                done[kind] = done.get(kind, 0) + count
        return done

    def requests(self):
        return sum(len(client.seconds) + len(client.wrong) for client in self.good) + sum(
            self.misdeeds().values())

    async def take_samples(self):
        began = time.monotonic()
        for number in range(SAMPLES):
            await asyncio.sleep(max(0, began + (number + 1) * self.seconds / SAMPLES - time.monotonic()))
            if not self.shop.is_alive():
                return
            figures = looked(self.shop)
            self.samples.add(self.requests(), figures)
            if (number + 1) % (SAMPLES // 6) == 0:
                held = ", ".join(f"{value} {name}" for name, value in figures.items())
                say(f"{time.monotonic() - began:.0f} s: {self.requests()} requests, {len(self.wrong())} "
                    f"wrong answers; {held}")

    async def work(self):
        over = asyncio.Event()
        clients = [asyncio.create_task(client.work(over)) for client in [*self.good, *self.bad]]
        try:
            await self.take_samples()
            over.set()
            await asyncio.gather(*clients[:len(self.good)])
        finally:
            for client in clients:
                client.cancel()
            await asyncio.gather(*clients, return_exceptions=True)


def report(run, ended, processors):
    """Says what has been seen; whether all of it was well."""
    answers, wrong = run.answers(), run.wrong()
    milliseconds = [1000 * seconds for seconds in answers]
    say(f"{len(answers)} right answers and {len(wrong)} wrong ones to {len(run.good)} good clients")
    if len(answers) > 1:
        cuts = statistics.quantiles(milliseconds, n=100)
        say(f"an answer took {cuts[49]:.1f} ms (median), {cuts[98]:.1f} ms (p99), {max(milliseconds):.1f} ms "
            "(longest)")
    did = ", ".join(f"{count} {kind.replace('_', ' ')}" for kind, count in sorted(run.misdeeds().items()))
    say(f"{len(run.bad)} misbehaving clients: {did}")
    say(f"{processors:.0f} s of a processor for the clients")
    for what in wrong[:MOST_WRONG_SHOWN]:
        say(f"wrong: {what}")
    growths = [run.samples.growth(limit) for limit in LIMITS]
    for line in soak_growth.table(growths, "requests"):
        print(line, flush=True)
    if ended != 0:
        say(f"the service has ended with {ended} (see {LOG})")
    return not wrong and bool(answers) and ended == 0 and all(one.is_within for one in growths)


def soak(program, seconds, seed):
    """Runs `program` for so long; whether all was well."""
    os.makedirs(os.path.dirname(LOG), exist_ok=True)
    say(f"the service for {seconds:.0f} s under {CLIENTS} clients, seed {seed}")
    shop = Shop(program, LOG)
    processors = time.process_time()
    try:
        run = Run(shop, seconds, seed)
        asyncio.run(run.work())
    except BaseException:
        shop.close()
        raise
    ended = shop.process.poll() if not shop.is_alive() else shop.close()
    return report(run, ended, time.process_time() - processors)


def main(program, seconds, seed):
    try:
        return 0 if soak(program, seconds, seed) else 1
    except Broken as problem:
        say(str(problem))
        return 1
