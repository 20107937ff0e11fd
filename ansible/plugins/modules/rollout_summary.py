# The Varden Setting Tool's developers; licence: MIT

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

DOCUMENTATION = r"""
module: rollout_summary
short_description: Writes the summary of a rollout
version_added: 2.3.0
description:
  - Of all printers of the play; those that the run has not come to are there as not begun. Behind them stand those of
    earlier runs that are not of this play, such as with C(--limit), as they were left.
  - A printer that Ansible goes on without counts as failed, whatever task of the play has failed; one whose task has
    ended in the middle of its change needs a person.
  - Writes C(summary.csv) and C(summary.html) into the rollout's folder, and counts the printers that the run has failed
    on, unreachable ones as well. Asks no printer.
options:
  folder:
    description: The rollout's folder.
    type: path
    required: true
  faults_allowed:
    description: The rollout is to stop when the run has failed on more printers.
    type: int
    default: 0
  title:
    description: The page's title.
    type: str
    default: Rollout
attributes:
  check_mode:
    description: Writes into the folder check/ beside.
    support: full
  diff_mode:
    description: Tells what differs.
    support: none
author:
  - The Varden Setting Tool's developers (@varden)
"""

EXAMPLES = r"""
- name: Write the summary
  varden.printer.rollout_summary:
    folder: rollouts/autumn
  run_once: true
"""

RETURN = r"""
counts:
  description: How many printers have which result, also those of earlier runs.
  returned: always
  type: dict
faults:
  description: The printers of the play that failed or could not be reached.
  returned: always
  type: list
  elements: str
stop:
  description: Whether these are more than are allowed.
  returned: always
  type: bool
lines:
  description: One line for each printer of the play's batch.
  returned: always
  type: list
  elements: str
csv:
  description: The table for programs.
  returned: always
  type: str
html:
  description: The page for people.
  returned: always
  type: str
"""
