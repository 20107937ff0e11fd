# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: maintain
short_description: Has a printer carry out a maintenance function
version_added: 2.3.0
description:
  - Has a printer carry out a maintenance function. Nobody is asked; the task is the answer.
  - The task has changed something when C(ram-clear), C(threshold-calib) or C(sensor-adjust) was sent. The other
    functions look, or print labels.
  - What changes something is not sent while a change of the printer's settings is under way or was left in the middle;
    the latter fails and says that a person is needed.
options:
  function:
    description: The function; C(varden maintain --help) tells what each does.
    type: str
    required: true
    choices: [ram-clear, threshold-calib, sensor-adjust, head-check, test-print, diag-print]
  fields:
    description: What the function takes, by names.
    type: dict
    default: {}
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.state
attributes:
  check_mode:
    description: Sends nothing, and does not look whether the fields are right.
    support: partial
  diff_mode:
    description: Tells what differs.
    support: none
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: A label with a bar code
  varden.printer.maintain:
    function: test-print
    fields:
      pattern: barcode
      issue-count: 1
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
sent:
  description: Whether anything may have gone out to the printer.
  returned: always
  type: bool
fields:
  description: What the function takes, by names, also what was not given.
  returned: when the printer was asked
  type: dict
commands:
  description: The texts of its commands.
  returned: when the printer was asked
  type: list
  elements: str
code:
  description: The status code, two characters.
  returned: when the printer has answered
  type: str
text:
  description: Its words.
  returned: when the code has any
  type: str
known:
  description: Whether the code is one that the program knows.
  returned: when the printer has answered
  type: bool
msg:
  description: What went wrong, or that nothing is sent.
  returned: when the task fails, the printer is unreachable or with check mode
  type: str
journal:
  description: The journal of a change that is neither whole nor undone.
  returned: when a person is needed
  type: str
person_needed:
  description: Whether the printer is neither as it was nor as wanted, or nobody knows.
  returned: when the task fails
  type: bool
"""
