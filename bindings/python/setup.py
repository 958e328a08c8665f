"""One wheel for every Python of a platform: the library inside is C, called through ctypes."""

import setuptools
from wheel.bdist_wheel import bdist_wheel


class PlatformWheel(bdist_wheel):
    def finalize_options(self):
        super().finalize_options()
        self.root_is_pure = False

    def get_tag(self):
        return "py3", "none", super().get_tag()[2]


setuptools.setup(cmdclass={"bdist_wheel": PlatformWheel})
