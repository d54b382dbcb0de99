"""Runs the Conan recipe and its test package with stand-ins for Conan's modules.

Usage: conan_stand_in.py SOURCE BUILD WORK CMAKE CXX
"""

import fnmatch
import importlib.util
import os
import shutil
import subprocess
import sys
import types

source, build, work, cmake, cxx = sys.argv[1:]


def copy(_, pattern, src, dst, excludes=()):
    """As Conan's: all files of a folder, but those whose path in it one of `excludes` fits."""
    for folder, _, files in os.walk(src):
        for file in files:
            path = os.path.relpath(os.path.join(folder, file), src)
            if fnmatch.fnmatch(path, pattern) and not any(fnmatch.fnmatch(path, exclude) for exclude in excludes):
                os.makedirs(os.path.dirname(os.path.join(dst, path)), exist_ok=True)
                shutil.copy(os.path.join(folder, file), os.path.join(dst, path))


class Toolchain:
    def __init__(self, recipe):
        self.recipe, self.cache_variables = recipe, {}

    def generate(self):
        self.recipe.cache_variables = self.cache_variables


class CMake:
    """Configures what the recipe says; the build that there is stands in for the one that this would be."""

    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        options = [f"-D{name}={'ON' if value else 'OFF'}" for name, value in self.recipe.cache_variables.items()]
        run(cmake, "-S", self.recipe.export_sources_folder, "-B", f"{work}/configured", "-G", "Ninja",
            f"-DCMAKE_CXX_COMPILER={cxx}", *options)

    def build(self):
        pass

    def install(self):
        run(cmake, "--install", build, "--prefix", self.recipe.package_folder)


class Environment(dict):
    def append(self, name, value, separator=" "):
        self[name] = self[name] + separator + value if name in self else value


def run(*command, **environment):
    result = subprocess.run(command, env={**os.environ, **environment}, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if result.returncode != 0 or "not used by the project" in result.stderr:
        sys.exit(f"{command} fails:\n{result.stdout}{result.stderr}")
    return result.stdout


def module(name, **members):
    sys.modules[name] = types.ModuleType(name)
    vars(sys.modules[name]).update(members)


module("conan", ConanFile=object)
module("conan.tools", )
module("conan.tools.build", check_min_cppstd=lambda recipe, standard: None)
module("conan.tools.cmake", CMake=CMake, CMakeToolchain=Toolchain, cmake_layout=lambda recipe: None)
module("conan.tools.files", copy=copy, load=lambda recipe, path: open(path, encoding="utf-8").read())

found = importlib.util.spec_from_file_location("conanfile", f"{source}/packaging/conan/conanfile.py")
conanfile = importlib.util.module_from_spec(found)
found.loader.exec_module(conanfile)

shutil.rmtree(work, ignore_errors=True)
recipe = conanfile.Kelcl()
recipe.recipe_folder = f"{source}/packaging/conan"
recipe.export_sources_folder = f"{work}/exported"
recipe.package_folder = f"{work}/package"
recipe.cpp_info = types.SimpleNamespace(set_property=lambda name, value: None)
recipe.runenv_info = Environment()

recipe.set_version()
assert recipe.version == "3.10.1", recipe.version
recipe.export_sources()
assert not os.path.exists(f"{work}/exported/build"), "a build is exported with the sources"
recipe.generate()
recipe.build()
recipe.package()
recipe.package_info()

(config,) = recipe.cpp_info.builddirs
run(cmake, "-S", f"{source}/packaging/conan/test_package", "-B", f"{work}/test", "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={cxx}",
    f"-Dkelcl_DIR={recipe.package_folder}/{config}")
run(cmake, "--build", f"{work}/test")
for language, text in {"C": "The index", "de_DE.UTF-8": "Der Index", "it_IT.UTF-8": "The index"}.items():
    said = run(f"{work}/test/host", LANG=language, **recipe.runenv_info)
    assert said.startswith(f"KELCL: {text}"), said
