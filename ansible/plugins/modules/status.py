# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: status
short_description: Asks a printer for its status
version_added: 2.3.0
description:
  - Asks a printer for its status. The task succeeds whatever the status is. Changes nothing.
extends_documentation_fragment:
  - varden.printer.printer
attributes:
  check_mode:
    description: Asks as always.
    support: full
  diff_mode:
    description: Tells what differs.
    support: none
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: Is the printer there, and on line?
  varden.printer.status:
  register: printer
  failed_when: printer.code != '00'
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
seconds:
  description: How long the printer took to answer.
  returned: when the printer has answered
  type: float
msg:
  description: What went wrong.
  returned: when the task fails or the printer is unreachable
  type: str
person_needed:
  description: Whether the printer is neither as it was nor as wanted, or nobody knows.
  returned: when the task fails
  type: bool
"""
