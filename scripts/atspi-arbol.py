#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Lists the accessibility tree an application shows on the AT-SPI bus.

Prints one line per object: its role, its name in quotes and the states a
screen reader announces (selected, focused, active, ...), indented by
depth. With the demo under a virtual display and its own D-Bus session:

    xvfb-run -a dbus-run-session -- sh -c '
        /usr/libexec/at-spi-bus-launcher --launch-immediately &
        sleep 1
        QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb build/default/bin/bodega &
        sleep 4
        /usr/bin/python3 scripts/atspi-arbol.py bodega'

Needs python3-pyatspi (Debian), hence the system's own python3.
"""

import argparse
import sys

import pyatspi

ESTADOS = {
    pyatspi.STATE_SELECTED: "selected",
    pyatspi.STATE_FOCUSED: "focused",
    pyatspi.STATE_ACTIVE: "active",
    pyatspi.STATE_SELECTABLE: "selectable",
    pyatspi.STATE_SENSITIVE: "sensitive",
}


def linea(nodo, nivel):
    estados = nodo.getState()
    marcas = [nombre for estado, nombre in ESTADOS.items() if estados.contains(estado)]
    acciones = []
    try:
        accion = nodo.queryAction()
        acciones = [accion.getName(i) for i in range(accion.nActions)]
    except NotImplementedError:
        pass
    texto = f'{"  " * nivel}{nodo.getRoleName()} "{nodo.name}"'
    if nodo.description:
        texto += f' ({nodo.description})'
    if marcas:
        texto += " [" + ", ".join(marcas) + "]"
    if acciones:
        texto += " {" + ", ".join(acciones) + "}"
    return texto


def recorrer(nodo, nivel, profundidad, salida):
    salida.append(linea(nodo, nivel))
    if nivel >= profundidad:
        return
    for i in range(nodo.childCount):
        hijo = nodo.getChildAtIndex(i)
        if hijo is not None:
            recorrer(hijo, nivel + 1, profundidad, salida)


def main():
    opciones = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    opciones.add_argument("aplicacion", help="the application's name on the bus, e.g. bodega")
    opciones.add_argument("--profundidad", type=int, default=20, help="how deep to go (default 20)")
    args = opciones.parse_args()
    escritorio = pyatspi.Registry.getDesktop(0)
    for i in range(escritorio.childCount):
        app = escritorio.getChildAtIndex(i)
        if app is not None and app.name.lower() == args.aplicacion.lower():
            salida = []
            recorrer(app, 0, args.profundidad, salida)
            print("\n".join(salida))
            return 0
    nombres = [escritorio.getChildAtIndex(i).name for i in range(escritorio.childCount)]
    print(f"{args.aplicacion} is not on the bus; there are: {nombres}", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
