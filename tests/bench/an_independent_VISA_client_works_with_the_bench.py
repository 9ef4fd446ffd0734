"""The bench's library, called by a VISA client that knows nothing of it. The first argument is the library's path."""

import os
import sys
import tempfile
import time
import unittest

import pyvisa
from pyvisa.constants import BufferOperation, EventMechanism, EventType, InterfaceType, RENLineOperation, StatusCode

library = os.path.abspath(sys.argv.pop(1))

# The library reads its bench file once, so all tests share one bench.
bench_file = tempfile.NamedTemporaryFile("w", suffix=".bench")
bench_file.write("""
instrument USB0::0xFFFF::0x0020::SB20-0001::INSTR
  identity "Orlane,SB-20,SB20-0001,1.04"
  serial "SB20-0001"
  card 2
  channel 1-4 VOLT
  channel 5 TEMP PT385 FRTD
instrument GPIB0::22::INSTR
  identity "Orlane,SB-10,SB10-0002,1.02"
  card 1
  channel 1-3 TCO K
instrument GPIB0::30::INSTR
  silent
instrument GPIB0::31::INSTR
  unplugged at call 1
""")
bench_file.flush()
unittest.addModuleCleanup(bench_file.close)
os.environ["VANTREL_BENCH"] = bench_file.name
manager = pyvisa.ResourceManager(library)


class Client(unittest.TestCase):
    def Open(self, resource, **options):
        instrument = manager.open_resource(resource, write_termination="\n", **options)
        self.addCleanup(instrument.close)
        return instrument

    def ExpectStatus(self, status, call, *arguments):
        with self.assertRaises(pyvisa.errors.VisaIOError) as raised:
            call(*arguments)
        self.assertEqual(raised.exception.error_code, status)

    def test_all_resources_are_listed(self):
        self.assertEqual(manager.list_resources(), (
            "USB0::0xFFFF::0x0020::SB20-0001::INSTR", "GPIB0::22::INSTR", "GPIB0::30::INSTR", "GPIB0::31::INSTR"))
        self.assertEqual(manager.list_resources("USB?*"), ("USB0::0xFFFF::0x0020::SB20-0001::INSTR",))
        self.assertEqual(manager.list_resources("ASRL?*"), ())

    def test_the_library_says_what_it_is(self):
        name = pyvisa.constants.ResourceAttribute.resource_manufacturer_name
        self.assertEqual(manager.visalib.get_attribute(manager.session, name)[0], "VANTREL's bench")

    def test_each_resource_opens_and_tells_what_it_is(self):
        for resource in manager.list_resources():
            instrument = self.Open(resource)
            self.assertEqual(instrument.resource_class, "INSTR")
            self.assertEqual(instrument.resource_name, resource)
            expected = InterfaceType.usb if resource.startswith("USB") else InterfaceType.gpib
            self.assertEqual(instrument.interface_type, expected)
            self.assertEqual(manager.resource_info(resource).resource_name, resource)
            self.assertEqual(instrument.timeout, 2000)

    def test_an_instrument_tells_its_bus_address(self):
        usb = self.Open("USB0::0xFFFF::0x0020::SB20-0001::INSTR")
        self.assertEqual((usb.manufacturer_id, usb.model_code), (0xFFFF, 0x0020))
        self.assertEqual((usb.manufacturer_name, usb.model_name), ("Orlane", "SB-20"))
        self.assertEqual((usb.serial_number, usb.is_4882_compliant), ("SB20-0001", True))
        gpib = self.Open("GPIB0::22::INSTR")
        self.assertEqual((gpib.primary_address, gpib.secondary_address), (22, 0xFFFF))

    def test_a_name_may_be_written_in_each_of_its_forms(self):
        for name in ["gpib::22", "GPIB0::22::INSTR", "USB::0xffff::0x0020::SB20-0001", "USB0::0xFFFF::0x0020::SB20-0001::0::INSTR"]:
            self.assertIn("Orlane", self.Open(name).query("*IDN?"))

    def test_what_is_not_there_is_told_as_such(self):
        self.ExpectStatus(StatusCode.error_resource_not_found, manager.open_resource, "GPIB0::5::INSTR")
        self.ExpectStatus(StatusCode.error_invalid_resource_name, manager.resource_info, "nothing")

    def test_identity_and_plan_are_queried(self):
        instrument = self.Open("USB0::0xFFFF::0x0020::SB20-0001::INSTR")
        self.assertEqual(instrument.query("*IDN?"), "Orlane,SB-20,SB20-0001,1.04\n")
        self.assertEqual(instrument.query("rout:state?"), "2\n")
        self.assertEqual(instrument.query("rout:scan:func? 1"), '"VOLT"\n')
        self.assertEqual(instrument.query("rout:scan:func? 20"), '"NONE"\n')
        self.assertEqual(instrument.query("TEMPerature:RTD:TYPE? @5"), "PT385\n")

    def test_a_plan_is_changed(self):
        instrument = self.Open("GPIB0::22::INSTR")
        instrument.write('rout:scan:func 3,"RES"')
        self.assertEqual(instrument.query("rout:scan:func? 3"), '"RES"\n')
        instrument.write('rout:scan:func 3,"TCO"')

    def test_a_scan_is_started_polled_and_fetched(self):
        instrument = self.Open("USB0::0xFFFF::0x0020::SB20-0001::INSTR")
        instrument.write("rout:scan:count 5")
        instrument.write("rout:SCAN")
        polls = 0
        while int(instrument.query("rout:scan:state?")) < 5:
            polls += 1
            self.assertLess(polls, 1000)
            time.sleep(0.01)
        readings = instrument.query_ascii_values("fetch?")
        self.assertEqual(len(readings), 5)
        self.assertTrue(all(-20 < reading < 60 for reading in readings), readings)

    def test_a_reply_ends_at_the_termination_character_where_that_is_enabled(self):
        instrument = self.Open("GPIB0::22::INSTR", read_termination="\n")
        self.assertEqual(instrument.query("rout:state?"), "1")
        self.assertEqual(instrument.last_status, StatusCode.success_termination_character_read)

    def test_a_long_reply_is_read_in_pieces(self):
        instrument = self.Open("GPIB0::22::INSTR", chunk_size=4)
        self.assertEqual(instrument.query("*IDN?"), "Orlane,SB-10,SB10-0002,1.02\n")

    def test_an_instrument_that_answers_nothing_is_a_time_out(self):
        instrument = self.Open("GPIB0::30::INSTR", timeout=200)
        start = time.monotonic()
        self.ExpectStatus(StatusCode.error_timeout, instrument.query, "*IDN?")
        self.assertGreater(time.monotonic() - start, 0.19)

    def test_an_instrument_that_is_unplugged_is_a_lost_connection(self):
        instrument = self.Open("GPIB0::31::INSTR")
        self.ExpectStatus(StatusCode.error_connection_lost, instrument.write, "*IDN?")
        self.ExpectStatus(StatusCode.error_connection_lost, instrument.clear)

    def test_the_status_byte_says_that_a_reply_waits_until_it_is_cleared(self):
        instrument = self.Open("GPIB0::22::INSTR", timeout=100)
        self.assertEqual(instrument.stb, 0)
        instrument.write("*IDN?")
        self.assertEqual(instrument.stb, 16)
        instrument.clear()
        self.assertEqual(instrument.stb, 0)
        self.ExpectStatus(StatusCode.error_timeout, instrument.read)

    def test_trigger_remote_and_flush_are_taken(self):
        instrument = self.Open("GPIB0::22::INSTR")
        instrument.assert_trigger()
        instrument.control_ren(RENLineOperation.asrt_address_llo)
        instrument.flush(BufferOperation.discard_read_buffer)
        self.assertIn("Orlane", instrument.query("*IDN?"))

    def test_a_lock_keeps_other_sessions_out(self):
        mine = self.Open("GPIB0::22::INSTR")
        other = self.Open("GPIB0::22::INSTR")
        mine.lock_excl()
        self.assertIn("Orlane", mine.query("*IDN?"))
        self.ExpectStatus(StatusCode.error_resource_locked, other.write, "*IDN?")
        self.ExpectStatus(StatusCode.error_timeout, other.lock_excl, 10)
        mine.unlock()
        self.assertIn("Orlane", other.query("*IDN?"))
        self.ExpectStatus(StatusCode.error_session_not_locked, mine.unlock)

    def test_a_shared_lock_opens_to_its_key(self):
        mine = self.Open("GPIB0::22::INSTR")
        other = self.Open("GPIB0::22::INSTR")
        key = mine.lock(requested_key="ours")
        self.ExpectStatus(StatusCode.error_resource_locked, other.write, "*IDN?")
        self.assertEqual(other.lock(requested_key=key), key)
        self.assertIn("Orlane", other.query("*IDN?"))

    def test_a_closed_session_gives_its_lock_back(self):
        mine = manager.open_resource("GPIB0::22::INSTR", access_mode=pyvisa.constants.AccessModes.exclusive_lock)
        self.ExpectStatus(StatusCode.error_resource_locked, self.Open("GPIB0::22::INSTR").write, "*IDN?")
        mine.close()
        self.assertIn("Orlane", self.Open("GPIB0::22::INSTR").query("*IDN?"))

    def test_events_are_not_supported(self):
        instrument = self.Open("GPIB0::22::INSTR")
        event, queue = EventType.service_request, EventMechanism.queue
        self.ExpectStatus(StatusCode.error_invalid_event, instrument.enable_event, event, queue)
        self.ExpectStatus(StatusCode.error_not_enabled, instrument.wait_on_event, event, 10)
        instrument.disable_event(event, queue)
        instrument.discard_events(event, queue)

    def test_a_call_that_is_not_supported_says_so(self):
        instrument = self.Open("GPIB0::22::INSTR")
        self.ExpectStatus(StatusCode.error_nonsupported_operation, instrument.send_command, b"\x3f")
        self.ExpectStatus(StatusCode.error_nonsupported_operation, instrument.pass_control, 1, 0)

    def test_attributes_that_are_read_only_or_unknown_are_told_apart(self):
        gpib = self.Open("GPIB0::22::INSTR")
        attribute = pyvisa.constants.ResourceAttribute
        self.ExpectStatus(StatusCode.error_attribute_read_only, gpib.set_visa_attribute, attribute.interface_number, 1)
        self.ExpectStatus(StatusCode.error_nonsupported_attribute, gpib.get_visa_attribute, attribute.usb_serial_number)
        self.ExpectStatus(StatusCode.error_nonsupported_attribute_state,
                          gpib.set_visa_attribute, attribute.termchar_enabled, 2)

    def test_a_status_is_put_into_words(self):
        self.assertEqual(manager.visalib.status_description(manager.session, StatusCode.error_timeout)[0],
                         "The time-out has passed.")


if __name__ == "__main__":
    unittest.main()
