# What a program outside may include: the object of a model and its records, the services a host gives, units, readers and
# writers of files, the report, and the element groups with their closed forms. Only these are installed, and docs/api
# tells of them. A header that one of them includes is public too; tests/install compiles them all outside.
set(QVXFEM_PUBLIC_HEADERS
  elements/brick/brick_group.h
  elements/member/beam_group.h
  elements/member/member_curve.h
  elements/member/member_fixed_end.h
  elements/shell/shell4_group.h
  files/model_file.h
  files/results_file.h
  model/default_records.h
  model/find_record.h
  model/jx_struct.h
  model/multi_dof_check.h
  model/near_nodes.h
  model/records/comb_result.h
  model/records/design_criteria.h
  model/records/design_result.h
  model/records/element.h
  model/records/element_stress.h
  model/records/envelope.h
  model/records/host_data.h
  model/records/load.h
  model/records/node.h
  model/records/property.h
  model/records/record_order.h
  model/records/result.h
  model/records/spring.h
  model/records/text_fields.h
  model/records/unit.h
  model/units.h
  platform/cstring.h
  platform/cwin_app.h
  platform/cwnd.h
  platform/export.h
  platform/file_error.h
  platform/host_services.h
  platform/wide_path.h
  quad/double128.h
  report/report.h
  sap2000/import_loss.h
  sap2000/sap2000_file.h
  sap2000/sap2000_importer.h
  tools/geometry.h
  tools/jx_exception.h
  tools/jx_point.h)
list(TRANSFORM QVXFEM_PUBLIC_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/src/)
