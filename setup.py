"""Builds the package varnel for pip (see pyproject.toml): the package python/varnel and its
extension varnel._core, which CMake compiles (target varnel_python) for the interpreter running
the build. The version is the program's, from project(Varnel VERSION ...) in CMakeLists.txt.
setuptools' own files go to build-pip/, the CMake build inside it, so a second install compiles
only what changed. CMAKE_BUILD_PARALLEL_LEVEL sets the jobs of the compilation."""

import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent


def program_version():
    text = (ROOT / "CMakeLists.txt").read_text()
    return re.search(r"project\(Varnel VERSION ([0-9.]+)", text).group(1)


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = pathlib.Path(self.build_temp).resolve() / "cmake"
        subprocess.run(["cmake", "-S", str(ROOT), "-B", str(build), "-DCMAKE_BUILD_TYPE=Release",
                        "-DVARNEL_TESTS=OFF", "-DVARNEL_EXPORT=OFF",
                        f"-DPython3_EXECUTABLE={sys.executable}"], check=True)
        subprocess.run(["cmake", "--build", str(build), "--target", "varnel_python"], check=True)
        built = build / "python" / "varnel" / pathlib.Path(self.get_ext_filename(ext.name)).name
        target = pathlib.Path(self.get_ext_fullpath(ext.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(built, target)


setup(
    version=program_version(),
    entry_points=(ROOT / "python" / "entry_points.txt").read_text(),
    ext_modules=[Extension("varnel._core", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    options={"build": {"build_base": "build-pip"}, "egg_info": {"egg_base": "build-pip"}},
)
