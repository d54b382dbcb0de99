"""The Conan recipe, which takes the source from the tree it lies in: conan create packaging/conan"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class Kelcl(ConanFile):
    name = "kelcl"
    description = "General-purpose C++ classes: strings, national languages, exceptions, trace, dates and times"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": True}

    @property
    def _tree(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        project = load(self, os.path.join(self._tree, "CMakeLists.txt"))
        self.version = re.search(r"project\(kelcl\s+VERSION ([0-9.]+)", project)[1]

    def export_sources(self):
        copy(self, "*", self._tree, self.export_sources_folder, excludes=("build/*", ".git", ".git/*"))

    def validate(self):
        check_min_cppstd(self, 17)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in "KELCL_TESTS", "KELCL_BENCH", "KELCL_EXAMPLES":
            toolchain.cache_variables[part] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # CMake is to use the package that kelcl installs for it: it knows how an archive is linked, and where the catalogs are.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "kelcl")]
        self.cpp_info.set_property("pkg_config_name", "kelcl")
        self.cpp_info.libs = ["kelcl"]
        catalogs = os.path.join(self.package_folder, "share", "locale")
        for language in "%l", "en":
            self.runenv_info.append("NLSPATH", f"{catalogs}/{language}/LC_MESSAGES/%N", separator=":")
