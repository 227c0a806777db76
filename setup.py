"""pip install --no-build-isolation . : builds the Python module with the project's CMake build (setuptools only)."""
import os
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = os.path.dirname(os.path.abspath(__file__))


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = os.path.join(ROOT, "build-python")  # beside the other build trees, reused on a rebuild
        subprocess.check_call(["cmake", "-S", ROOT, "-B", build, "-DCMAKE_BUILD_TYPE=Release",
                               "-DORVMATH_BUILD_TESTS=OFF", "-DORVMATH_BUILD_EXAMPLES=OFF",
                               "-DORVMATH_BUILD_PYTHON=ON", "-DORVMATH_INSTALL=OFF",
                               "-DPython3_EXECUTABLE=" + sys.executable])
        subprocess.check_call(["cmake", "--build", build, "--target", "orvmath_python_package", "--parallel", "2"])
        package = os.path.dirname(os.path.abspath(self.get_ext_fullpath(ext.name)))
        os.makedirs(package, exist_ok=True)
        built = os.path.join(build, "python", "orvmath")
        for name in os.listdir(built):  # the module, the library beside it, __init__.py and the stubs
            shutil.copy2(os.path.join(built, name), package, follow_symlinks=True)


setup(
    name="orvmath",
    version="1.0.0",
    description="Routes addressed by chainage and offset, point-in-polygon and polygon offsets, over numpy",
    packages=["orvmath"],
    package_dir={"orvmath": "python/orvmath"},
    package_data={"orvmath": ["*.pyi", "py.typed"]},
    ext_modules=[Extension("orvmath._orvmath", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    install_requires=["numpy"],
    zip_safe=False,
)
