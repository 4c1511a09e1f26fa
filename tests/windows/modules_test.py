"""What the built Windows modules tell the system's loader about themselves."""

import os
import re
import struct
import subprocess
import sys
import unittest

BIN = os.environ["QZ_BIN"]
OBJDUMP = os.environ["QZ_OBJDUMP"]

OWN = {"QZCore.dll", "QZUi.dll", "QZTUtlA.dll", "IFHeal.dll", "IFSilhouette.dll",
       "IFSphoffset.dll", "IFSpinsil.dll", "IFSweep.dll", "qzhost.exe",
       os.path.join("Resources", "QZTUtlRes.dll")}

# What the system brings, and the compiler's run time, which all modules of one build share.
SYSTEM = {"kernel32.dll", "advapi32.dll", "user32.dll", "msvcrt.dll", "psapi.dll"}
RUN_TIME = {"libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"}

# Who may import from whom, our own modules only.
CONTRACT = {
    # From the executable: its status bar and its keys.
    "QZTUtlA.dll": {"QZCore.dll", "QZUi.dll", "qzhost.exe", "IFHeal.dll", "IFSilhouette.dll",
                    "IFSphoffset.dll", "IFSpinsil.dll", "IFSweep.dll"},
    "QZCore.dll": set(),
    "QZUi.dll": set(),
    "IFHeal.dll": set(),
    "IFSilhouette.dll": set(),
    "IFSphoffset.dll": set(),
    "IFSpinsil.dll": set(),
    "IFSweep.dll": set(),
    "qzhost.exe": {"QZCore.dll"},
    os.path.join("Resources", "QZTUtlRes.dll"): set(),
}

# Undecorated operations and, as this compiler decorates them, the copy constructors (complete and
# base object) and assignments of the three host classes.
ADD_IN_EXPORTS = {"m_main", "m_version", "qztutlFilterStockByColor",
                  "qztutlStockModelCompress", "qztutlSweepMultipleToolpathsFromStock",
                  "qztutlSweepPartStockCompare", "qztutl_heal", "qztutl_silbndy",
                  "qztutlSpinSilBndy", "qztutlSphericalOffsetTris"}
for _name in ("9UIDataTip", "10UIErrorTip", "12CLongProcess"):
    ADD_IN_EXPORTS |= {"_ZN" + _name + end for end in ("C1ERKS_", "C2ERKS_", "aSERKS_")}

FIXED_INFO = struct.pack("<LL", 0xFEEF04BD, 0x10000)
APPLICATION, LIBRARY = 1, 2

CHARACTERISTICS = ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT")


def private_headers(module):
    return subprocess.run([OBJDUMP, "-p", os.path.join(BIN, module)], check=True,
                          stdout=subprocess.PIPE, universal_newlines=True).stdout


def imports(module):
    return set(re.findall(r"^\s*DLL Name: (\S+)", private_headers(module), re.MULTILINE))


def exports(module):
    table = private_headers(module).split("[Ordinal/Name Pointer] Table", 1)
    return set(re.findall(r"^\s*\[\s*\d+\].*?(\S+)$", table[1].split("\n\n")[0], re.MULTILINE)) \
        if len(table) == 2 else set()


class Modules(unittest.TestCase):
    def test_add_in_exports_exactly_its_list(self):
        self.assertEqual(exports("QZTUtlA.dll"), ADD_IN_EXPORTS)

    def test_host_executable_exports_its_two_functions(self):
        self.assertEqual(exports("qzhost.exe"),
                         {"_Z8KeyPresss", "_Z19UpdateStatusBarTextPKc"})

    def test_every_module_imports_only_what_the_contract_allows(self):
        for module in sorted(OWN):
            others = {name for name in imports(module)
                      if name.lower() not in SYSTEM and name not in RUN_TIME}
            self.assertLessEqual(others, CONTRACT[module], module)

    def test_add_in_imports_its_host_and_its_kernel(self):
        self.assertLessEqual(CONTRACT["QZTUtlA.dll"], imports("QZTUtlA.dll"))

    def test_modules_share_one_run_time(self):
        for module in ("QZTUtlA.dll", "IFHeal.dll", "IFSilhouette.dll", "IFSphoffset.dll",
                       "IFSpinsil.dll", "IFSweep.dll", "QZCore.dll", "qzhost.exe"):
            self.assertIn("libstdc++-6.dll", imports(module), module)
            self.assertIn("libgcc_s_seh-1.dll", imports(module), module)

    def test_host_executable_does_not_link_the_add_in(self):
        self.assertNotIn("QZTUtlA.dll", imports("qzhost.exe"))

    def test_modules_may_be_placed_anywhere_and_their_data_not_run(self):
        for module in sorted(OWN | RUN_TIME):
            headers = private_headers(module)
            for characteristic in CHARACTERISTICS:
                self.assertIn(characteristic, headers, module)
            self.assertNotIn("relocations stripped", headers, module)

    def test_modules_carry_a_version(self):
        numbers = tuple(int(number) for number in os.environ["QZ_VERSION"].split(".")) + (0,)
        for module in sorted(OWN):
            with open(os.path.join(BIN, module), "rb") as file:
                data = file.read()
            name = os.path.basename(module)
            for text in ("VS_VERSION_INFO", "ProductVersion", os.environ["QZ_VERSION"], name):
                self.assertIn(text.encode("utf-16-le"), data, module)
            kind = APPLICATION if name.endswith(".exe") else LIBRARY
            # Alone in its resource is this block of numbers, behind a signature.
            self.assertEqual(data.count(FIXED_INFO), 1, module)
            found = struct.unpack_from("<8H4xLLL", data, data.index(FIXED_INFO) + len(FIXED_INFO))
            high_first = tuple(numbers[i] for i in (1, 0, 3, 2)) * 2
            self.assertEqual(found[:8], high_first, module)
            self.assertEqual(found[-1], kind, module)

    def test_everything_imported_is_shipped_or_the_systems(self):
        for module in sorted(OWN | RUN_TIME):
            for name in imports(module):
                if name.lower() not in SYSTEM:
                    self.assertIn(name, os.listdir(BIN), module)

    def test_nothing_else_is_shipped(self):
        shipped = {os.path.relpath(os.path.join(folder, name), BIN)
                   for folder, _, names in os.walk(BIN) for name in names}
        self.assertEqual({name for name in shipped if name.lower().endswith((".dll", ".exe"))},
                         OWN | RUN_TIME)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=1))
