# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: rollout_step
short_description: One step of the role rollout on one printer
version_added: 2.3.0
description:
  - What the roles C(varden.printer.rollout) and C(varden.printer.rollback) do on each printer. It keeps what has come
    of it in the rollout's folder, whatever becomes of the controller.
options:
  step:
    description:
      - C(prepare) backs the printer up, unless it was touched by this rollout already; C(change) changes it; C(back)
        brings back what the backup holds of the settings that the rollout has changed.
      - C(prepare) is given what C(change) is given, so that a printer that lacks a variable fails before any of its batch
        is changed.
      - A printer on which C(prepare) has failed fails in C(change), so that all of a batch are prepared before it is
        decided whether any of them is changed.
    type: str
    required: true
    choices: [prepare, change, back]
  folder:
    description: The rollout's folder.
    type: path
    required: true
  title:
    description: The title of the summary's page.
    type: str
    default: Rollout
  settings:
    description: As of M(varden.printer.settings).
    type: dict
  file:
    description: As of M(varden.printer.settings).
    type: str
  faults_allowed:
    description: Nothing is begun any more when this run has failed on more printers.
    type: int
    default: 0
  allow_link_change:
    description: As of M(varden.printer.settings).
    type: bool
    default: false
  stop_bit_is:
    description: As of M(varden.printer.settings).
    type: str
  expect_host:
    description: As of M(varden.printer.settings).
    type: str
  resume:
    description: As of M(varden.printer.settings).
    type: bool
    default: true
extends_documentation_fragment:
  - varden.printer.printer
  - varden.printer.printer.pause
  - varden.printer.printer.writing
  - varden.printer.printer.state
attributes:
  check_mode:
    description: Only tells what would be changed; backs nothing up.
    support: full
  diff_mode:
    description: Tells what differs.
    support: full
seealso:
  - module: varden.printer.rollout_summary
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: Change the printers of this batch
  varden.printer.rollout_step:
    step: change
    folder: rollouts/autumn
    settings:
      feed-adj: -1.5
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
"""
