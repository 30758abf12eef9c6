"""Whether what a process holds grows with what it is asked: samples, their slope, and what is allowed."""
import dataclasses

WARMING_UP = 0.2  # of all operations: caches and pools fill meanwhile, and their samples are not judged
FEWEST_SAMPLES = 5


@dataclasses.dataclass(frozen=True)
class Limit:
    """What a figure may grow by. `noise` is what may come and go by itself between two samples, and what a
    short run therefore cannot tell from growth; `per_thousand` operations is allowed on top. Before `warm`
    operations nothing is known of it."""
    name: str
    per_thousand: float
    noise: float
    warm: int = 0

    def growth_within(self, operations):
        return self.noise + self.per_thousand * operations / 1000


@dataclasses.dataclass(frozen=True)
class Growth:
    """One figure over a run. The slope is that of the samples after warming up; without enough of them
    nothing can be judged, and it is None."""
    limit: Limit
    first: float
    last: float
    operations: int  # judged
    slope: float | None  # per 1,000 operations

    @property
    def allowed(self):
        """The highest slope, per 1,000 operations."""
        return self.limit.growth_within(self.operations) * 1000 / self.operations

    @property
    def is_within(self):
        return self.slope is None or self.slope <= self.allowed


def slope_of(points):
    """The least squares' line through pairs, at least two of them with different first values."""
    count = len(points)
    mean_x = sum(x for x, _ in points) / count
    mean_y = sum(y for _, y in points) / count
    over = sum((x - mean_x) * (y - mean_y) for x, y in points)
    return over / sum((x - mean_x) ** 2 for x, _ in points)


class Samples:
    """Figures by name, as they were after so many operations."""

    def __init__(self):
        self.rows = []

    def add(self, operations, figures):
        self.rows.append((operations, dict(figures)))

    def growth(self, limit):
        from_here = max(WARMING_UP * self.rows[-1][0], limit.warm)
        points = [(done, figures[limit.name]) for done, figures in self.rows if done >= from_here]
        if len(points) < FEWEST_SAMPLES or points[0][0] == points[-1][0]:
            return Growth(limit, self.rows[0][1][limit.name], self.rows[-1][1][limit.name], 0, None)
        return Growth(limit, points[0][1], points[-1][1], points[-1][0] - points[0][0],
                      1000 * slope_of(points))

    def less(self, other):
        """What these have more than the other run's samples had after as many operations."""
        difference = Samples()
        for (operations, figures), (others, subtracted) in zip(self.rows, other.rows, strict=True):
            if operations != others:
                raise ValueError("the runs were sampled at different operations")
            difference.add(operations, {name: figures[name] - subtracted[name] for name in figures})
        return difference


def table(growths, operations="operations"):
    """Lines for people."""
    yield f"{'':22}{'first':>10}{'last':>10}{'slope':>10}{'allowed':>10}   per 1,000 {operations}"
    for one in growths:
        line = f"{one.limit.name:22}{one.first:10.0f}{one.last:10.0f}"
        if one.slope is None:
            yield f"{line}   not judged: still warming up"
        else:
            yield f"{line}{one.slope:10.2f}{one.allowed:10.2f}{'' if one.is_within else '   GROWS'}"
