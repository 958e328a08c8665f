"""A pole in a magnetic field from first principles, with imperfect sensors, for whole turns."""

import numpy as np

import tiltpole

STRENGTH = 5000.0
DIP = 60.0
ERRORS = {  # per magnetometer: gain, offset
    "a": (np.array([[1, 0, 0], [0.03, 1.1, 0], [-0.02, 0.01, 0.92]]), np.array([310, -220, 130])),
    "b": (np.array([[1, 0, 0], [-0.01, 0.95, 0], [0.02, 0, 1.06]]), np.array([-90, 45, -75])),
}


def about(axis, degrees):
    """Rotations about a sensor axis (0 x, 1 y, 2 z), n x 3 x 3."""
    angle = np.radians(np.atleast_1d(degrees))
    turned = np.zeros((angle.size, 3, 3))
    i, j = (axis + 1) % 3, (axis + 2) % 3
    turned[:, axis, axis] = 1
    turned[:, i, i] = turned[:, j, j] = np.cos(angle)
    turned[:, j, i] = np.sin(angle)
    turned[:, i, j] = -np.sin(angle)
    return turned


def read(attitude, seed=1, noise=3.0):
    """Samples of a pole whose axes (x forward, y left, z up) are the columns of `attitude`, in the
    world's north, west and up."""
    draw = np.random.default_rng(seed)
    field = np.array([np.cos(np.radians(DIP)), 0, -np.sin(np.radians(DIP))]) * STRENGTH
    seen = np.einsum("nij,i->nj", attitude, field)
    readings = {}
    for which, axes in (("a", [1, 1, 1]), ("b", [-1, -1, 1])):
        gain, offset = ERRORS[which]
        readings[which] = seen * axes @ gain.T + offset + draw.normal(0, noise, seen.shape)
    tilts = np.degrees(np.arcsin(attitude[:, 2, :2]))
    second = np.arange(len(seen)) // 10
    time = np.column_stack([second // 3600, second // 60 % 60, second % 60])
    return tiltpole.make_samples(tilts[:, 0], tilts[:, 1], readings["a"], readings["b"], time)


def turns(count=300):
    """A turn about the pole's axis and a turn about the sensor's y axis."""
    angle = np.linspace(1, 361, count, endpoint=False)
    heading = about(2, np.full(count, -75.0))
    return read(about(2, -angle), seed=1), read(heading @ about(1, angle), seed=2)


def leaning(heading, lean):
    """A pole with headings [degrees], its x axis dipped by `lean` [degrees]; and where its tip lies
    from the antenna, for a length of 1, along north, east and up."""
    attitude = about(2, -np.asarray(heading)) @ about(1, lean)
    tip = -attitude[:, :, 2]
    return read(attitude, seed=3), tip * [1, -1, 1]
