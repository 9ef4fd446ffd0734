"""What a screen reader is told of the program: a client of the accessibility bus."""

from gi.repository import Gio, GLib

hang_on = 20  # seconds that a step may take

# States of an accessible, by their place in its set of bits.
active, checked, enabled, focused, selected, showing = 1, 4, 8, 12, 23, 25


class Bus:
    """Asks the program's accessibles; `node` is the path of one."""

    def __init__(self, session_address):
        session = self._Connection(session_address)
        (address,) = self._Call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        self._connection = self._Connection(address)
        self._program = None

    @staticmethod
    def _Connection(address):
        flags = Gio.DBusConnectionFlags
        return Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    @staticmethod
    def _Call(connection, name, path, interface, method):
        return connection.call_sync(
            name, path, interface, method, None, None, Gio.DBusCallFlags.NONE, hang_on * 1000, None).unpack()

    def Root(self):
        """The program itself; None as long as it is not on the bus."""
        root = "/org/a11y/atspi/accessible/root"
        (programs,) = self._Call(
            self._connection, "org.a11y.atspi.Registry", root, "org.a11y.atspi.Accessible", "GetChildren")
        if not programs:
            return None
        self._program, node = programs[0]
        return node

    def Ask(self, questions):
        """The answers to (node, interface, method, arguments), all asked at once: a program that runs a scan answers
        only when it yields."""
        questions = list(questions)
        answers = [None] * len(questions)
        left = len(questions)

        def Take(connection, result, i):
            nonlocal left
            left -= 1
            try:
                answer = connection.call_finish(result).unpack()
                answers[i] = answer[0] if answer else None
            except GLib.Error as fault:
                answers[i] = fault

        for i, (node, interface, method, arguments) in enumerate(questions):
            self._connection.call(self._program, node, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                  hang_on * 1000, None, Take, i)
        while left:
            GLib.MainContext.default().iteration(True)
        for answer in answers:
            if isinstance(answer, GLib.Error):
                raise answer
        return answers

    def _All(self, nodes, method, interface="Accessible", arguments=None):
        return self.Ask((node, "org.a11y.atspi." + interface, method, arguments) for node in nodes)

    def _Property(self, nodes, name, interface="Accessible"):
        arguments = GLib.Variant("(ss)", ("org.a11y.atspi." + interface, name))
        return self.Ask((node, "org.freedesktop.DBus.Properties", "Get", arguments) for node in nodes)

    def Names(self, nodes):
        return self._Property(nodes, "Name")

    def Descriptions(self, nodes):
        return self._Property(nodes, "Description")

    def Roles(self, nodes):
        return self._All(nodes, "GetRoleName")

    def Children(self, node):
        return [child for _, child in self._All([node], "GetChildren")[0]]

    def States(self, nodes):
        """Sets of bits."""
        return [low | high << 32 for low, high in self._All(nodes, "GetState")]

    def Box(self, node):
        """Left, top, width and height on the screen."""
        return self._All([node], "GetExtents", "Component", GLib.Variant("(u)", (0,)))[0]

    def Texts(self, nodes):
        """Of fields."""
        return self._All(nodes, "GetText", "Text", GLib.Variant("(ii)", (0, -1)))

    def Values(self, node):
        """Value, minimum and maximum of a slider."""
        return [self._Property([node], name, "Value")[0] for name in ("CurrentValue", "MinimumValue", "MaximumValue")]

    def Size(self, table):
        """Rows and columns."""
        sizes = (GLib.Variant("(ss)", ("org.a11y.atspi.Table", name)) for name in ("NRows", "NColumns"))
        return self.Ask((table, "org.freedesktop.DBus.Properties", "Get", size) for size in sizes)

    def Cells(self, table, rows=None):
        """Nodes of the cells, row by row: of all rows, or of these."""
        count, columns = self.Size(table)
        rows = range(count) if rows is None else rows
        cells = self.Ask((table, "org.a11y.atspi.Table", "GetAccessibleAt", GLib.Variant("(ii)", (row, column)))
                         for row in rows for column in range(columns))
        return [[node for _, node in cells[i * columns:(i + 1) * columns]] for i in range(len(rows))]
