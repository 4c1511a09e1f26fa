"""Checks the binary contract from the compiler's own dumps for the Visual C++ target: slot orders,
field orders and sizes, and decorated names.

usage: check_layout.py CLANG NM SOURCE_FOLDER
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

CLANG, NM, SOURCE = sys.argv[1:4]


def compile_interfaces(*flags):
    command = [CLANG, "--target=x86_64-pc-windows-msvc", "-std=c++20", "-fms-compatibility-version=19.30",
               "-I" + SOURCE, "-I" + os.path.join(SOURCE, "platform", "mfc"),
               "-I" + os.path.join(SOURCE, "tests", "abi", "library"), *flags,
               os.path.join(SOURCE, "tests", "abi", "interfaces.cpp")]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise AssertionError(done.stderr)
    return done.stdout


class Layout(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.object = os.path.join(cls.folder.name, "interfaces.obj")
        cls.vtables = compile_interfaces("-c", "-o", cls.object, "-Xclang", "-fdump-vtable-layouts")
        cls.records = compile_interfaces("-fsyntax-only", "-Xclang", "-fdump-record-layouts-complete")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def slots(self, name):
        """The operations of a class's own table, in slot order, from the block of its indices."""
        block = re.search(r"VFTable indices for '%s' \((\d+) entr(?:y|ies)\)\.\n(.*?)\n\n" % name,
                          self.vtables + "\n\n", re.S)
        self.assertIsNotNone(block, name)
        found = re.findall(r"^\s*(\d+) \| .*?%s::(\w+)\(" % name, block.group(2), re.M)
        self.assertEqual([int(index) for index, _ in found], list(range(int(block.group(1)))))
        return [operation for _, operation in found]

    def record(self, name):
        """[(offset, declaration)] of a class's own fields, and its size."""
        for block in self.records.split("*** Dumping AST Record Layout"):
            head = re.match(r"\s*0 \| (?:struct|class) (\S+)(?: \(empty\))?$", block.strip("\n").split("\n")[0])
            if head and head.group(1) == name:
                fields = re.findall(r"^ +(\d+) \|   (\S.*)$", block, re.M)
                size = int(re.search(r"sizeof=(\d+)", block).group(1))
                return [(int(offset), text.strip()) for offset, text in fields], size
        self.fail("no layout of " + name)

    def assert_overrides(self, interface, name):
        """The class fills every slot of the interface with an operation of its own."""
        table = re.search(r"VFTable for '%s' in '%s' \((\d+) entries\)\.\n(.*?)\n\n" % (interface, name),
                          self.vtables + "\n\n", re.S)
        self.assertIsNotNone(table, name)
        operations = re.findall(r"^\s*\d+ \| .*?%s::(\w+)\(" % name, table.group(2), re.M)
        self.assertEqual(operations, self.slots(interface))

    def imported_names(self):
        listing = subprocess.run([NM, "-u", self.object], capture_output=True, text=True, check=True).stdout
        return set(re.sub(r"__imp_", "", name) for name in listing.split())

    def test_dialog_has_ten_slots_in_order(self):
        self.assertEqual(self.slots("UIDialog"), [
            "CreateWait", "UpdateWait", "EndWait", "CreateProgress", "ResetWait", "UpdateProgress",
            "SetProgress", "EndProgress", "ErrorMessage", "IsActive"])

    def test_surface_channel_has_four_slots_in_order(self):
        self.assertEqual(self.slots("SurfaceTransfer"), ["Reset", "AddVertex", "AddTriangle", "Close"])

    def test_curve_channel_has_six_slots_in_order(self):
        self.assertEqual(self.slots("CurveTransfer"),
                         ["Reset", "BeginGroup", "EndGroup", "AddPoint", "AddSegment", "Close"])

    def test_channels_have_no_data_of_their_own(self):
        for name in ("SurfaceTransfer", "CurveTransfer"):
            fields, size = self.record(name)
            self.assertEqual([text for _, text in fields if "vftable" not in text], [], name)
            self.assertEqual(size, 8, name)

    def test_segment_record_keeps_its_field_order_and_size(self):
        fields, size = self.record("SegIpb")
        self.assertEqual(fields, [(0, "int start"), (4, "int end"), (8, "int segment"), (12, "_Bool open")])
        self.assertEqual(size, 16)

    def test_host_progress_has_three_slots_in_order(self):
        self.assertEqual(self.slots("HostProgress"), ["LoadMessage", "ShowProgress", "IsCancelled"])

    def test_string_is_one_pointer_wide(self):
        _, size = self.record("CString")
        self.assertEqual(size, 8)

    def test_surface_writer_keeps_its_field_order_and_size(self):
        fields, size = self.record("SurfaceXferQZ")
        kinds = [(offset, re.sub(r"\s+m_\w+$|\s+\w+$", "", text)) for offset, text in fields
                 if "SurfaceTransfer" not in text]
        self.assertEqual([offset for offset, _ in kinds], [8, 16, 24, 28, 32, 40])
        self.assertRegex(kinds[0][1], r"\*$")
        self.assertRegex(kinds[1][1], r"\*$")
        self.assertEqual(kinds[2][1], "int")
        self.assertEqual(kinds[3][1], "int")
        self.assertRegex(kinds[4][1], r"(FILE|_iobuf) ?\*$")
        self.assertRegex(kinds[5][1], r"char ?\[256\]$")
        self.assertEqual(size, 40 + 256)

    def test_curve_writer_keeps_its_slots_field_order_and_size(self):
        fields, size = self.record("CurveXferQZ")
        own = [(offset, text.split()[-1]) for offset, text in fields if "CurveTransfer" not in text]
        names = [name for _, name in own]
        self.assertEqual(names, [
            "m_points", "m_pointNumbers", "m_segments", "m_curves", "m_curveBuffer", "m_firstPoint",
            "m_lastPoint", "m_lists", "m_index", "m_pointNumberCapacity", "m_pointCapacity",
            "m_segmentCapacity", "m_curveCapacity", "m_growthStep", "m_tree", "m_pointCount",
            "m_segmentCount", "m_curveCount", "m_curveLength", "m_beginGroupCount",
            "m_endGroupCount", "m_mode", "m_stream", "m_closureThreshold"])
        offsets = [offset for offset, _ in own]
        self.assertEqual(offsets[:8], [8, 16, 24, 32, 40, 48, 52, 56])
        # How large the two containers are is the library's affair.
        behind = offsets[9]
        self.assertEqual([offset - behind for offset in offsets[9:]],
                         [0, 4, 8, 12, 16, 20, 28, 32, 36, 40, 44, 48, 52, 56, 64])
        self.assertEqual(size, behind + 72)
        kinds = dict((text.split()[-1], text.rsplit(" ", 1)[0]) for _, text in fields)
        self.assertEqual(kinds["m_tree"], "int[2]")
        self.assertEqual(kinds["m_closureThreshold"], "double")
        self.assertRegex(kinds["m_stream"], r"(FILE|_iobuf) ?\*$")
        entry, entry_size = self.record("CurveXferQZ::Curve")
        self.assertEqual([(offset, text.split()[-1]) for offset, text in entry],
                         [(0, "segments"), (8, "count")])
        self.assertEqual(entry_size, 16)
        self.assert_overrides("CurveTransfer", "CurveXferQZ")

    def test_stock_callback_keeps_its_field_order_and_size(self):
        fields, size = self.record("UIDlgKernel")
        own = [(offset, text) for offset, text in fields if text.split()[-1].startswith("m_")]
        own = [(offset, text) for offset, text in own if " m_" in text]
        names = [text.split()[-1] for _, text in own]
        offsets = [offset for offset, _ in own]
        self.assertEqual(names[:4], ["m_errorRaised", "m_host", "m_progressText", "m_progressTotal"])
        self.assertEqual(names[-1], "m_workDir")
        self.assertEqual(offsets, [8, 16, 24, 32, 36, 40, 48])
        self.assertEqual(size, 56)

    def test_status_bar_callback_is_the_interface_and_nothing_else(self):
        fields, size = self.record("UIDialogQZC")
        self.assertEqual([text for _, text in fields if "UIDialog" not in text and "vftable" not in text], [])
        self.assertEqual(size, 8)
        self.assert_overrides("UIDialog", "UIDialogQZC")

    def test_kernel_members_have_their_decorated_names(self):
        names = self.imported_names()
        for expected in (
                "??0IFSweep@@QEAA@PEAVUIDialog@@@Z",
                "??1IFSweep@@QEAA@XZ",
                "?OpenStockChannel@IFSweep@@QEAAPEAUSurfaceTransfer@@XZ",
                "?OpenCompareSurfaceChannel@IFSweep@@QEAAPEAUSurfaceTransfer@@XZ",
                "?SetFiveAxisBufferingLevel@IFSweep@@QEAAXH@Z",
                "?Run@IFSweep@@QEAAXPEAUSurfaceTransfer@@PEAD@Z",
                "?Compare@IFSweep@@QEAAXPEAUSurfaceTransfer@@0IHPEAIPEAN0@Z",
                "??0IFHeal@@QEAA@PEAVUIDialog@@@Z",
                "??1IFHeal@@QEAA@XZ",
                "?Run@IFHeal@@QEAAXNPEAD0@Z",
                "??0IFSilhouette@@QEAA@XZ",
                "??1IFSilhouette@@QEAA@XZ",
                "?Run@IFSilhouette@@QEAAXPEAD0NPEAVUIDialog@@@Z",
                "??0IFSpinsil@@QEAA@PEAVUIDialog@@@Z",
                "??1IFSpinsil@@QEAA@XZ",
                "?OpenInputChannel@IFSpinsil@@QEAAPEAUSurfaceTransfer@@XZ",
                "?Run@IFSpinsil@@QEAAXPEAUCurveTransfer@@N@Z",
                "??0IFSphoffset@@QEAA@PEAVUIDialog@@@Z",
                "??1IFSphoffset@@QEAA@XZ",
                "?OpenInputChannel@IFSphoffset@@QEAAPEAUSurfaceTransfer@@XZ",
                "?Run@IFSphoffset@@QEAAXNNPEAUSurfaceTransfer@@@Z"):
            self.assertIn(expected, names)

    def test_exports_have_plain_names(self):
        names = self.imported_names()
        for expected in ("m_version", "m_main", "qztutlSweepMultipleToolpathsFromStock",
                         "qztutlSweepPartStockCompare", "qztutlStockModelCompress",
                         "qztutlFilterStockByColor", "qztutl_heal", "qztutl_silbndy",
                         "qztutlSpinSilBndy", "qztutlSphericalOffsetTris"):
            self.assertIn(expected, names)

    def test_host_services_of_the_status_bar_have_their_decorated_names(self):
        names = self.imported_names()
        for expected in ("?KeyPress@@YA_NF@Z", "?UpdateStatusBarText@@YAXPEBD@Z",
                         "?clearprompt@@YAXXZ", "?cleartext@@YAXXZ"):
            self.assertIn(expected, names)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
