# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: info
short_description: Reads settings of a printer
version_added: 2.3.0
description:
  - Reads all settings of a printer, or those that are named. Changes nothing.
options:
  settings:
    description: The names of the settings to read; all of them unless given.
    type: list
    elements: str
    default: []
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.pause
attributes:
  check_mode:
    description: Reads as always.
    support: full
  diff_mode:
    description: Tells what differs.
    support: none
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: What is the printer's feed?
  varden.printer.info:
    settings: [feed-adj, speed]
  register: printer

- name: Say it
  ansible.builtin.debug:
    msg: "{{ printer.settings['feed-adj'] }}"
"""

RETURN = r"""
target:
  description: Where the printer is now, as C(varden) names it.
  returned: always
  type: str
exit_code:
  description: The exit code of C(varden).
  returned: when the printer was asked
  type: int
settings:
  description: The values by names; null where there is none.
  returned: always
  type: dict
unread:
  description: Why settings have no value, by names, C(not-reported), C(failed) or C(unreadable).
  returned: always
  type: dict
complete:
  description: Whether everything was read that was asked for and that an answer reports.
  returned: always
  type: bool
msg:
  description: What went wrong.
  returned: when the task fails or the printer is unreachable
  type: str
person_needed:
  description: Whether the printer is neither as it was nor as wanted, or nobody knows.
  returned: when the task fails
  type: bool
"""
