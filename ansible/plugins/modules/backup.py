# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: backup
short_description: Keeps the settings of a printer in a file of the controller
version_added: 2.3.0
description:
  - Reads a printer and writes its settings into a file, all or nothing. A file that holds the same already stays as it
    is, and the task has changed nothing. What the printer's sensors measure is kept, and is no difference.
options:
  dest:
    description:
      - The file. Its name tells the kind, C(.dt1) (parameters and adjustments), C(.dt2) (the network) or C(.json)
        (everything that the printer reports).
      - Its folder is made where it is missing.
    type: path
    required: true
  force:
    description: Whether a file that is there is replaced; if not, the printer is not asked.
    type: bool
    default: true
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.pause
attributes:
  check_mode:
    description: Reads, and writes no file.
    support: full
  diff_mode:
    description: Tells what differs.
    support: none
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: One file a printer
  varden.printer.backup:
    dest: "backups/{{ inventory_hostname }}.json"
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
dest:
  description: The file.
  returned: always
  type: str
filled:
  description: Settings that the file has to hold and no answer reports; they have their defaults there.
  returned: when the printer was read
  type: list
  elements: str
msg:
  description: What went wrong, or why the printer was not asked.
  returned: when the task fails, the printer is unreachable or the file is there already
  type: str
person_needed:
  description: Whether the printer is neither as it was nor as wanted, or nobody knows.
  returned: when the task fails
  type: bool
"""
