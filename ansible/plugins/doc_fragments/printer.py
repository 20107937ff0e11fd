# The Varden Setting Tool's developers; licence: MIT
"""Options and notes that the modules share."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type


class ModuleDocFragment:
    DOCUMENTATION = r"""
options:
  target:
    description:
      - The printer, as C(varden) names it, for instance C(lan:192.168.10.20), C(com:/dev/ttyUSB0,9600,E,8,1) or C(usb).
      - Unless given the variable C(varden_target); unless that is there C(lan:) and the host's C(ansible_host)
        (or its name), with C(ansible_port) where the host has one.
    type: str
  executable:
    description:
      - The program C(varden) on the controller. Unless given the variable C(varden_executable), else C(varden).
    type: path
requirements:
  - C(varden) on the controller
notes:
  - The task runs one process of C(varden) on the controller. Nothing is copied to the printer, and Ansible makes no
    connection to it; plays need C(gather_facts=false).
  - A printer that cannot be reached (exit code 3 of C(varden)) is an unreachable host.
attributes:
  action:
    description: Runs on the controller.
    support: full
"""

    PAUSE = r"""
options:
  pause:
    description:
      - The pause between two answers in seconds, from 0 to 10. Unless given the variable C(varden_pause), else 1.
    type: float
"""

    WRITING = r"""
options:
  reach:
    description:
      - For how long a printer that does not answer is sought, in seconds. Unless given the variable C(varden_reach),
        else 60.
    type: float
"""

    STATE = r"""
options:
  state_folder:
    description:
      - The folder of the journals. Unless given the variable C(varden_state_folder), else that of C(varden).
    type: path
"""
